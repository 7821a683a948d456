#include "installer/CopyQueue.h"

#include "installer/CopyReport.h"
#include "installer/DirectoryCopy.h"
#include "installer/EarlierManifest.h"

#include <QCoreApplication>
#include <QtConcurrent>

#include <system_error>
#include <thread>

namespace {

// A pool that gets no thread (limits on memory or on processes) says nothing and never starts.
bool isThreadToBeHad()
{
    try {
        std::thread([] {}).join();
        return true;
    } catch (const std::system_error &) {
        return false;
    }
}

void copy(const CopyQueue::Job &job)
{
    keepEarlierManifest(job.fromDir, job.toDir);
    const CopyOutcome outcome = copyDirectoryTree(
        job.fromDir, job.toDir, job.cover, [&job] { job.listener->directoryDone(); });
    job.listener->ended(outcome.isCopied(), copyReport(outcome, job.fromDir));
}

} // namespace

void CopyListener::directoryDone()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_callbacks.directoryDone) {
        m_callbacks.directoryDone();
    }
}

void CopyListener::ended(bool copied, const QString &message)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_callbacks.ended) {
        m_callbacks.ended(copied, message);
    }
}

void CopyListener::detach()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_callbacks = {};
}

CopyQueue &CopyQueue::instance()
{
    // Safe at exit: the application object waits for the pool before statics are destroyed.
    static CopyQueue queue;
    return queue;
}

void CopyQueue::start(Job job)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_jobs.push_back(std::move(job));
        if (m_jobs.size() > 1) {
            return; // whoever works on the first goes on with this one
        }
    }
    if (isThreadToBeHad()) {
        QtConcurrent::run([this] { run(); });
    } else if (QCoreApplication *application = QCoreApplication::instance()) {
        QMetaObject::invokeMethod(
            application, [this] { run(); }, Qt::QueuedConnection);
    }
}

void CopyQueue::run()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    if (m_isRunning) {
        return;
    }
    m_isRunning = true;
    while (!m_jobs.empty()) {
        const Job job = m_jobs.front();
        lock.unlock();
        copy(job);
        lock.lock();
        m_jobs.pop_front();
    }
    m_isRunning = false;
    m_empty.notify_all();
}

void CopyQueue::waitUntilEmpty()
{
    run(); // in case that nobody has begun
    std::unique_lock<std::mutex> lock(m_mutex);
    m_empty.wait(lock, [this] { return m_jobs.empty(); });
}
