#include "LoopbackServer.h"

#include <map>
#include <memory>

#include <QCryptographicHash>
#include <QSignalSpy>
#include <QTcpSocket>
#include <QTimer>

namespace {

LoopbackServer::Pairs parseHeaders(const QByteArray &head)
{
    LoopbackServer::Pairs headers;
    for (const QByteArray &line : head.split('\n').mid(1)) {
        const int colon = line.indexOf(':');
        headers.append({line.left(colon), line.mid(colon + 1).trimmed()});
    }
    return headers;
}

LoopbackServer::Pairs parseForm(const QByteArray &contentType, const QByteArray &body)
{
    LoopbackServer::Pairs fields;
    QByteArray boundary = contentType.mid(contentType.indexOf("boundary=") + 9);
    boundary = "--" + boundary.replace('"', "");
    int at = body.indexOf(boundary);
    while (at >= 0) {
        const int start = at + boundary.size() + 2;
        const int next = body.indexOf(boundary, start);
        const QByteArray part = body.mid(start, next - start - 2);
        const int blank = part.indexOf("\r\n\r\n");
        if (next >= 0) {
            const QByteArray prefix = "Content-Disposition: form-data; name=\"";
            const QByteArray head = part.left(blank);
            const bool plain = head.startsWith(prefix) && head.endsWith('"');
            fields.append({plain ? head.mid(prefix.size()).chopped(1) : head, part.mid(blank + 4)});
        }
        at = next;
    }
    return fields;
}

QByteArray expectedSignature(const LoopbackServer::Request &request)
{
    std::map<QByteArray, QByteArray> pairs;
    for (const auto &[name, value] : request.headers) {
        if (name.startsWith('_') && name != "_sign" && !value.isEmpty()) {
            pairs[name] = name + "=" + value;
        }
    }
    QByteArrayList texts;
    for (const auto &[name, text] : pairs) {
        texts.append(text);
    }
    return QCryptographicHash::hash(texts.join('&') + "Q#pd]3Ha>wz-8&Mv", QCryptographicHash::Md5)
        .toHex();
}

} // namespace

QByteArray LoopbackServer::Request::header(const QByteArray &name) const
{
    for (const auto &[other, value] : headers) {
        if (other.toLower() == name.toLower()) {
            return value;
        }
    }
    return {};
}

LoopbackServer::LoopbackServer()
{
    listen(QHostAddress::LocalHost);
    connect(this, &QTcpServer::newConnection, this, [this] {
        ++m_connections;
        QTcpSocket *socket = nextPendingConnection();
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QTcpSocket::readyRead, socket,
            [this, socket, buffer = std::make_shared<QByteArray>()] { serve(socket, *buffer); });
    });
}

QString LoopbackServer::baseAddress() const
{
    return QStringLiteral("http://127.0.0.1:%1").arg(serverPort());
}

void LoopbackServer::answer(const QByteArray &path, const Answer &answer)
{
    m_answers[path] = answer;
}

LoopbackServer::Request LoopbackServer::take(const QByteArray &path)
{
    QSignalSpy spy(this, &LoopbackServer::received);
    do {
        for (int i = 0; i < m_requests.size(); ++i) {
            if (m_requests.at(i).path == path) {
                return m_requests.takeAt(i);
            }
        }
    } while (spy.wait());
    return {};
}

void LoopbackServer::serve(QTcpSocket *socket, QByteArray &buffer)
{
    buffer += socket->readAll();
    const int headEnd = buffer.indexOf("\r\n\r\n");
    if (headEnd < 0) {
        return;
    }
    const QByteArray head = buffer.left(headEnd);
    const QByteArrayList words = head.left(head.indexOf('\r')).split(' ');
    Request request{words.value(0), words.value(1), parseHeaders(head), {}};
    const int length = request.header("Content-Length").toInt();
    if (buffer.size() < headEnd + 4 + length) {
        return;
    }
    request.fields = parseForm(request.header("Content-Type"), buffer.mid(headEnd + 4, length));
    buffer.remove(0, headEnd + 4 + length);
    check(request);
    m_requests.append(request);
    const Answer answer = m_answers.value(request.path, Answer{{}, 404});
    QTimer::singleShot(answer.delay, socket, [this, socket, answer] { send(socket, answer); });
    emit received();
}

void LoopbackServer::check(const Request &request)
{
    if (!m_answers.contains(request.path)) {
        m_complaints.append(QLatin1String("unexpected path ") + request.path);
    }
    const QByteArray sign = request.header("_sign");
    if (sign != (request.method == "POST" ? expectedSignature(request) : QByteArray())) {
        m_complaints.append(QLatin1String("wrong signature for ") + request.path);
    }
}

void LoopbackServer::send(QTcpSocket *socket, const Answer &answer)
{
    if (answer.manner == Silent) {
        return;
    }
    const int missing = answer.manner == Cut ? 100 : 0;
    const QByteArray length =
        "Content-Length: " + QByteArray::number(answer.body.size() + missing) + "\r\n";
    socket->write("HTTP/1.1 " + QByteArray::number(answer.status) + " Some reason\r\n"
        + answer.headers
        + (answer.manner == Endless || answer.headers.contains("chunked") ? QByteArray() : length)
        + "\r\n" + answer.body);
    connect(socket, &QTcpSocket::bytesWritten, this, [this](qint64 n) { m_bytesSent += n; });
    if (answer.manner == Cut) {
        socket->disconnectFromHost();
    } else if (answer.manner == Endless) {
        connect(socket, &QTcpSocket::bytesWritten, socket, [socket, body = answer.body] {
            if (socket->bytesToWrite() == 0) {
                socket->write(body);
            }
        });
    }
}
