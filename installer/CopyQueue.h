#pragma once

#include <QString>

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

// Where a copy tells what it has done, for as long as there is somebody to tell.
class CopyListener {
public:
    struct Callbacks {
        std::function<void()> directoryDone;
        std::function<void(bool copied, const QString &message)> ended;
    };

    explicit CopyListener(Callbacks callbacks)
        : m_callbacks(std::move(callbacks))
    {
    }

    // Any thread. Nothing happens after detach().
    void directoryDone();
    void ended(bool copied, const QString &message);
    // Waits for a call that is under way.
    void detach();

private:
    std::mutex m_mutex;
    Callbacks m_callbacks;
};

// The copies of the whole process: one at a time, on one thread of the global pool, in the order in
// which they were asked for. Two that ran at once into one directory would break each other's
// files. Where no thread is to be had, they run in the event loop or in waitUntilEmpty(), whichever
// comes first.
class CopyQueue {
public:
    struct Job {
        QString fromDir;
        QString toDir;
        bool cover;
        std::shared_ptr<CopyListener> listener;
    };

    static CopyQueue &instance();

    void start(Job job);
    void waitUntilEmpty();

private:
    void run();

    std::mutex m_mutex;
    std::condition_variable m_empty;
    std::deque<Job> m_jobs; // the first is being copied, if m_isRunning
    bool m_isRunning = false; // somebody works the jobs off
};
