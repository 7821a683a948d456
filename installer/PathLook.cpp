#include "installer/PathLook.h"

#include "base/AskingUser.h"
#include "base/ExecutableDirectory.h"
#include "installer/PathOutlook.h"

#include <QDir>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace {

constexpr int limitMs = 2000;
constexpr int mostWorkers = 4; // the others of a file system that hangs wait
constexpr std::chrono::milliseconds farewell(500);

} // namespace

struct PathLook::Workers {
    struct Answer {
        int number; // of the path
        PathOutlook outlook;
        QString home;
    };

    std::mutex mutex;
    std::condition_variable ended;
    PathLook *receiver = nullptr; // of the answers; none after its end
    std::vector<Answer> answers;
    int busy = 0;

    void look(int number, const QString &path, const QString &bundle);
};

void PathLook::Workers::look(int number, const QString &path, const QString &bundle)
{
    Answer answer{number, PathOutlook::of(path, bundle), AskingUser::home()};
    const std::lock_guard<std::mutex> lock(mutex);
    --busy;
    answers.push_back(std::move(answer));
    if (receiver != nullptr) {
        QMetaObject::invokeMethod(receiver, "takeAnswers", Qt::QueuedConnection);
    }
    ended.notify_all();
}

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
    try {
        std::thread([workers = m_workers, number = m_number, path = m_path,
                        bundle = executableDirectory()] {
            workers->look(number, path, bundle);
        }).detach();
    } catch (const std::system_error &) { // no thread to be had: the limit answers
        const std::lock_guard<std::mutex> lock(m_workers->mutex);
        --m_workers->busy;
    }
}

void PathLook::takeAnswers()
{
    std::vector<Workers::Answer> answers;
    {
        const std::lock_guard<std::mutex> lock(m_workers->mutex);
        answers.swap(m_workers->answers);
    }
    for (const Workers::Answer &answer : answers) {
        m_home = answer.home;
        if (answer.number == m_number && m_limit.isActive()) {
            m_limit.stop();
            const QString &nearest = answer.outlook.nearest;
            emit looked(m_path, answer.outlook.hint(),
                QUrl::fromLocalFile(nearest.isEmpty() ? m_home : nearest));
        }
    }
    if (m_isWaiting && m_limit.isActive()) {
        startWorker();
    }
}

void PathLook::giveUp()
{
    m_isWaiting = false;
    emit looked(
        m_path, QString(), QUrl::fromLocalFile(m_home.isEmpty() ? QDir::homePath() : m_home));
}
