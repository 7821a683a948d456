#include "installer/CopyQueue.h"

#include "installer/DirectoryCopy.h"

#include <QtConcurrent>

void CopyListener::directoryDone()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_directoryDone) {
        m_directoryDone();
    }
}

void CopyListener::detach()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_directoryDone = nullptr;
}

CopyQueue &CopyQueue::instance()
{
    // Safe at exit: the application object waits for the pool before statics are destroyed.
    static CopyQueue queue;
    return queue;
}

void CopyQueue::start(Job job)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_jobs.push_back(std::move(job));
    if (m_jobs.size() == 1) {
        QtConcurrent::run([this] { run(); });
    }
}

void CopyQueue::run()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    while (!m_jobs.empty()) {
        const Job job = m_jobs.front();
        lock.unlock();
        copyDirectoryTree(
            job.fromDir, job.toDir, job.cover, [&job] { job.listener->directoryDone(); });
        lock.lock();
        m_jobs.pop_front();
    }
    m_empty.notify_all();
}

void CopyQueue::waitUntilEmpty()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_empty.wait(lock, [this] { return m_jobs.empty(); });
}
