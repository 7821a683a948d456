#include "LoopbackServer.h"

#include <algorithm>
#include <memory>

#include <QCryptographicHash>
#include <QRegularExpression>
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

// What is not a plain field, with a name and nothing else, counts whole as a name.
LoopbackServer::Pairs parseForm(const QByteArray &contentType, const QByteArray &body)
{
    static const QRegularExpression plain(
        "^\r\nContent-Disposition: form-data; name=\"([^\"]*)\"\r\n\r\n(.*)\r\n$",
        QRegularExpression::DotMatchesEverythingOption);
    LoopbackServer::Pairs fields;
    QByteArray boundary = contentType.mid(contentType.indexOf("boundary=") + 9);
    boundary = "--" + boundary.replace('"', "");
    const QStringList parts = QString::fromLatin1(body).split(QString::fromLatin1(boundary));
    for (const QString &part : parts.mid(1, parts.size() - 2)) {
        const auto field = plain.match(part);
        const QString name = field.hasMatch() ? field.captured(1) : part;
        fields.append({name.toLatin1(), field.captured(2).toLatin1()});
    }
    return fields;
}

QByteArray expectedSignature(const LoopbackServer::Pairs &headers)
{
    QByteArrayList texts;
    for (const auto &[name, value] : headers)
        if (name.startsWith('_') && name != "_sign" && !value.isEmpty())
            texts.append(name + '=' + value);
    std::sort(texts.begin(), texts.end());
    return QCryptographicHash::hash(texts.join('&') + "Q#pd]3Ha>wz-8&Mv", QCryptographicHash::Md5)
        .toHex();
}

} // namespace

QByteArray LoopbackServer::Request::header(const QByteArray &name) const
{
    for (const auto &[other, value] : headers)
        if (other.toLower() == name.toLower())
            return value;
    return {};
}

QByteArray LoopbackServer::Request::form() const
{
    QByteArray text = method;
    for (const auto &[name, value] : fields)
        text += ' ' + name + '=' + value;
    return text;
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

LoopbackServer::Request LoopbackServer::take(const QByteArray &path)
{
    QSignalSpy spy(this, &LoopbackServer::received);
    do {
        for (int i = 0; i < m_requests.size(); ++i)
            if (m_requests.at(i).path == path)
                return m_requests.takeAt(i);
    } while (spy.wait());
    return {};
}

void LoopbackServer::serve(QTcpSocket *socket, QByteArray &buffer)
{
    buffer += socket->readAll();
    const int headEnd = buffer.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return;
    const QByteArray head = buffer.left(headEnd);
    const QByteArrayList words = head.left(head.indexOf('\r')).split(' ');
    Request request{words.value(0), words.value(1), parseHeaders(head), {}};
    const int length = request.header("Content-Length").toInt();
    if (buffer.size() < headEnd + 4 + length)
        return;
    request.fields = parseForm(request.header("Content-Type"), buffer.mid(headEnd + 4, length));
    buffer.remove(0, headEnd + 4 + length);
    if (!m_answers.contains(request.path))
        m_complaints.append(QLatin1String("unexpected path ") + request.path);
    if (request.header("_sign")
        != (request.method == "POST" ? expectedSignature(request.headers) : QByteArray()))
        m_complaints.append(QLatin1String("wrong signature for ") + request.path);
    m_requests.append(request);
    const Answer answer = m_answers.value(request.path, Answer{{}, 404});
    QTimer::singleShot(answer.delay, socket, [this, socket, answer] { send(socket, answer); });
    emit received();
}

void LoopbackServer::send(QTcpSocket *socket, const Answer &answer)
{
    if (answer.manner == Silent)
        return;
    const int promised = answer.body.size() + (answer.manner == Cut ? 100 : 0);
    const bool hasLength = answer.manner != Endless && !answer.headers.contains("chunked");
    const QByteArray length = "Content-Length: " + QByteArray::number(promised) + "\r\n";
    socket->write("HTTP/1.1 " + QByteArray::number(answer.status) + " Some reason\r\n"
        + answer.headers + (hasLength ? length : "") + "\r\n" + answer.body);
    connect(socket, &QTcpSocket::bytesWritten, this, [this](qint64 n) { m_bytesSent += n; });
    if (answer.manner == Cut)
        socket->disconnectFromHost();
    if (answer.manner == Endless)
        connect(socket, &QTcpSocket::bytesWritten, socket, [socket, body = answer.body] {
            if (socket->bytesToWrite() == 0)
                socket->write(body);
        });
}
