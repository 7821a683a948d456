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
    explicit CopyListener(std::function<void()> directoryDone)
        : m_directoryDone(std::move(directoryDone))
    {
    }

    // Any thread. Nothing happens after detach().
    void directoryDone();
    // Waits for a call that is under way.
    void detach();

private:
    std::mutex m_mutex;
    std::function<void()> m_directoryDone;
};

// The copies of the whole process: one at a time, on one thread of the global pool, in the order in
// which they were asked for. Two that ran at once into one directory would break each other's
// files.
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
    std::deque<Job> m_jobs; // the first is being copied
};
