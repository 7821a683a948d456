#pragma once

#include <QString>

#include <string>
#include <thread>

// An HTTP server on 127.0.0.1 and on a thread of its own that gives every request the same answer
// and closes the connection. Plain sockets: it should cost little beside what is measured.
class LoopbackAnswers {
public:
    explicit LoopbackAnswers(const char *body);
    ~LoopbackAnswers();
    LoopbackAnswers(const LoopbackAnswers &) = delete;
    LoopbackAnswers &operator=(const LoopbackAnswers &) = delete;

    QString baseAddress() const; // scheme and host, no trailing slash

private:
    void serve() const;

    std::string m_answer;
    int m_listening;
    int m_port = 0;
    std::thread m_thread;
};
