#include "bench/functions/LoopbackAnswers.h"

#include <cstdlib>
#include <cstring>
#include <string>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

// The head, and as many bytes after it as it announces.
bool isComplete(const std::string &request)
{
    const std::size_t headEnd = request.find("\r\n\r\n");
    if (headEnd == std::string::npos) {
        return false;
    }
    static const std::string lengthKey = "Content-Length: ";
    const std::size_t length = request.find(lengthKey);
    const std::size_t announced = length < headEnd
        ? std::strtoul(request.c_str() + length + lengthKey.size(), nullptr, 10)
        : 0;
    return request.size() >= headEnd + 4 + announced;
}

} // namespace

LoopbackAnswers::LoopbackAnswers(const char *body)
    : m_answer("HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nConnection: close\r\n"
               "Content-Length: "
        + std::to_string(std::strlen(body)) + "\r\n\r\n" + body)
    , m_listening(socket(AF_INET, SOCK_STREAM, 0))
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto *const raw = reinterpret_cast<sockaddr *>(&address);
    if (bind(m_listening, raw, size) != 0 || listen(m_listening, 64) != 0
        || getsockname(m_listening, raw, &size) != 0) {
        std::abort();
    }
    m_port = ntohs(address.sin_port);
    m_thread = std::thread([this] { serve(); });
}

LoopbackAnswers::~LoopbackAnswers()
{
    shutdown(m_listening, SHUT_RDWR);
    m_thread.join();
    close(m_listening);
}

QString LoopbackAnswers::baseAddress() const
{
    return QStringLiteral("http://127.0.0.1:%1").arg(m_port);
}

void LoopbackAnswers::serve() const
{
    for (;;) {
        const int connection = accept(m_listening, nullptr, nullptr);
        if (connection < 0) {
            return;
        }
        std::string request;
        char buffer[8192];
        while (!isComplete(request)) {
            const ssize_t count = read(connection, buffer, sizeof buffer);
            if (count <= 0) {
                break;
            }
            request.append(buffer, static_cast<std::size_t>(count));
        }
        if (write(connection, m_answer.data(), m_answer.size()) < 0) {
            std::abort();
        }
        close(connection);
    }
}
