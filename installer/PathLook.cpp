#include "installer/PathLook.h"

#include "base/ExecutableDirectory.h"
#include "installer/AskingUser.h"

#include <QDir>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>

namespace {

constexpr int limitMs = 2000;
constexpr int mostWorkers = 4; // the others of a file system that hangs wait
constexpr std::chrono::milliseconds farewell(500);

} // namespace

struct PathLook::Workers {
    std::mutex mutex;
    std::condition_variable ended;
    PathLook *receiver = nullptr; // of the answers; none after its end
    int busy = 0;
};

PathLook::PathLook(QObject *parent)
    : QObject(parent)
    , m_workers(std::make_shared<Workers>())
{
    m_workers->receiver = this;
    m_limit.setSingleShot(true);
    m_limit.setInterval(limitMs);
    connect(&m_limit, &QTimer::timeout, this, &PathLook::giveUp);
}

PathLook::~PathLook()
{
    std::unique_lock<std::mutex> lock(m_workers->mutex);
    m_workers->receiver = nullptr;
    m_workers->ended.wait_for(lock, farewell, [this] { return m_workers->busy == 0; });
}

void PathLook::start(const QString &path)
{
    m_path = path;
    ++m_number;
    m_limit.start();
    startWorker();
}

void PathLook::startWorker()
{
    {
        const std::lock_guard<std::mutex> lock(m_workers->mutex);
        m_isWaiting = m_workers->busy >= mostWorkers;
        if (m_isWaiting) {
            return;
        }
        ++m_workers->busy;
    }
    const auto work = [workers = m_workers, path = m_path, bundle = executableDirectory(),
                          number = m_number] {
        const Answer answer{PathOutlook::of(path, bundle), AskingUser::home()};
        const std::lock_guard<std::mutex> lock(workers->mutex);
        --workers->busy;
        if (PathLook *receiver = workers->receiver) {
            QMetaObject::invokeMethod(
                receiver, [receiver, number, answer] { receiver->take(number, answer); },
                Qt::QueuedConnection);
        }
        workers->ended.notify_all();
    };
    try {
        std::thread(work).detach();
    } catch (const std::system_error &) { // no thread to be had: the limit answers
        const std::lock_guard<std::mutex> lock(m_workers->mutex);
        --m_workers->busy;
    }
}

void PathLook::take(int number, const Answer &answer)
{
    m_home = answer.home;
    if (number == m_number && m_limit.isActive()) {
        m_limit.stop();
        const QString &nearest = answer.outlook.nearest;
        emit looked(m_path, answer.outlook.hint(),
            QUrl::fromLocalFile(nearest.isEmpty() ? m_home : nearest));
    } else if (m_isWaiting && m_limit.isActive()) {
        startWorker();
    }
}

void PathLook::giveUp()
{
    m_isWaiting = false;
    emit looked(
        m_path, QString(), QUrl::fromLocalFile(m_home.isEmpty() ? QDir::homePath() : m_home));
}
