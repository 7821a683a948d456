#pragma once

#include <QCryptographicHash>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

// An HTTP server on 127.0.0.1 and on the thread of the test. It answers from a table of paths and
// keeps every request. What it does not know or finds wrongly signed is a complaint.
class LoopbackServer : public QTcpServer {
public:
    // Cut: the connection breaks off in the middle of the body. Silent: it stays, and nothing
    // comes. Endless: the body is sent over and over. Held: the answer waits for release().
    enum Manner { Whole, Cut, Silent, Endless, Held };

    struct Answer {
        QByteArray body = QByteArray();
        int status = 200;
        Manner manner = Whole;
        QByteArray headers = QByteArray(); // further ones, each ending in "\r\n"
    };

    struct Request {
        QByteArray method; // empty: there was no such request
        QByteArray path;
        QMap<QByteArray, QByteArray> headers;
        QByteArray form; // the method, then " name=value" for each field; what is none stays whole
    };

    LoopbackServer()
    {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this] {
            ++connections;
            QTcpSocket *socket = nextPendingConnection();
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { serve(socket); });
        });
    }

    // Sends the answer that the path has now to the oldest request that is held.
    bool release(const QByteArray &path)
    {
        for (int i = 0; i < m_held.size(); ++i) {
            if (m_held[i].path == path && m_held[i].socket) {
                send(m_held.takeAt(i).socket, m_answers.value(path));
                return true;
            }
        }
        return false;
    }

    QString baseAddress() const { return QString("http://127.0.0.1:%1").arg(serverPort()); }
    void answer(const QByteArray &path, const Answer &answer) { m_answers[path] = answer; }
    QList<Request> requests; // that nobody took
    QStringList complaints;
    int connections = 0; // accepted until now
    qint64 bytesSent = 0;

    Request take(const QByteArray &path) // the oldest one; waits for it
    {
        Request found;
        const bool isThere = QTest::qWaitFor([&] {
            for (int i = 0; i < requests.size() && found.path.isEmpty(); ++i)
                if (requests.at(i).path == path)
                    found = requests.takeAt(i);
            return !found.path.isEmpty();
        });
        return isThere ? found : Request();
    }

private:
    void serve(QTcpSocket *socket)
    {
        const QByteArray come = socket->peek(socket->bytesAvailable());
        const int headEnd = come.indexOf("\r\n\r\n");
        const QByteArrayList lines = come.left(headEnd).split('\n');
        Request request{lines[0].split(' ').value(0), lines[0].split(' ').value(1), {}, {}};
        for (const QByteArray &line : lines.mid(1))
            request.headers[line.left(line.indexOf(':'))] =
                line.mid(line.indexOf(':') + 1).trimmed();
        const int size = headEnd + 4 + request.headers["Content-Length"].toInt();
        if (headEnd < 0 || come.size() < size)
            return;
        QString body = QString::fromLatin1(socket->read(size).mid(headEnd + 4));
        const QByteArray type = request.headers["Content-Type"];
        const QString boundary =
            QLatin1String("--") + type.mid(type.indexOf('=') + 1).replace('"', "");
        const QRegularExpression field(QRegularExpression::escape(boundary)
                + "\r\nContent-Disposition: form-data; name=\"([^\"]*)\"\r\n\r\n(.*?)\r\n(?=--)",
            QRegularExpression::DotMatchesEverythingOption);
        body.replace(field, " \\1=\\2").remove(boundary + "--\r\n");
        request.form = request.method + body.toLatin1();
        if (!m_answers.contains(request.path))
            complaints.append(QLatin1String("unexpected path ") + request.path);
        if (request.headers["_sign"] != (request.method == "POST" ? signature(request) : ""))
            complaints.append(QLatin1String("wrong signature for ") + request.path);
        requests.append(request);
        const Answer answer = m_answers.value(request.path, Answer{{}, 404});
        if (answer.manner == Held) {
            m_held.append({request.path, socket});
            return;
        }
        send(socket, answer);
    }

    static QByteArray signature(const Request &request)
    {
        QByteArrayList texts;
        for (auto header = request.headers.begin(); header != request.headers.end(); ++header)
            if (header.key().startsWith('_') && header.key() != "_sign" && !header->isEmpty())
                texts.append(header.key() + '=' + *header);
        const QByteArray text = texts.join('&') + "Q#pd]3Ha>wz-8&Mv";
        return QCryptographicHash::hash(text, QCryptographicHash::Md5).toHex();
    }

    void send(QTcpSocket *socket, const Answer &answer)
    {
        if (answer.manner == Silent)
            return;
        const int promised = answer.body.size() + (answer.manner == Cut ? 100 : 0);
        const bool hasLength = answer.manner != Endless && !answer.headers.contains("chunked");
        const QByteArray length = "Content-Length: " + QByteArray::number(promised) + "\r\n";
        socket->write("HTTP/1.1 " + QByteArray::number(answer.status) + " Some reason\r\n"
            + answer.headers + (hasLength ? length : "") + "\r\n" + answer.body);
        connect(socket, &QTcpSocket::bytesWritten, this, [this, socket, answer](qint64 size) {
            bytesSent += size;
            if (answer.manner == Endless && socket->bytesToWrite() == 0)
                socket->write(answer.body);
        });
        if (answer.manner == Cut)
            socket->disconnectFromHost();
    }

    struct HeldRequest {
        QByteArray path;
        QPointer<QTcpSocket> socket;
    };

    QHash<QByteArray, Answer> m_answers;
    QList<HeldRequest> m_held;
};
