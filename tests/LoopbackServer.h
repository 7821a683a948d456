#pragma once

#include <QHash>
#include <QPair>
#include <QStringList>
#include <QTcpServer>

class QTcpSocket;

// An HTTP server on 127.0.0.1 and on the thread of the test. It answers from a table of paths and
// keeps every request. What it does not know, cannot read or finds wrongly signed is a complaint.
class LoopbackServer : public QTcpServer {
    Q_OBJECT

public:
    using Pairs = QList<QPair<QByteArray, QByteArray>>;

    enum Manner {
        Whole,
        Cut, // the connection breaks off in the middle of the body
        Silent, // the connection stays, and nothing comes
        Endless, // the body is sent over and over
    };

    struct Answer {
        QByteArray body = QByteArray();
        int status = 200;
        Manner manner = Whole;
        int delay = 0; // milliseconds
        QByteArray headers = QByteArray(); // further ones, each ending in "\r\n"
    };

    struct Request {
        QByteArray method; // empty: there was no such request
        QByteArray path;
        Pairs headers;
        Pairs fields; // of the form, in order

        QByteArray header(const QByteArray &name) const;
        QByteArray form() const; // the method, then " name=value" for each field
    };

    LoopbackServer();

    QString baseAddress() const { return QString("http://127.0.0.1:%1").arg(serverPort()); }
    void answer(const QByteArray &path, const Answer &answer) { m_answers[path] = answer; }
    Request take(const QByteArray &path); // the oldest one; waits for it
    int pending() const { return m_requests.size(); } // requests that nobody took
    int connections() const { return m_connections; } // accepted until now
    qint64 bytesSent() const { return m_bytesSent; }
    QStringList complaints() const { return m_complaints; }

signals:
    void received();

private:
    void serve(QTcpSocket *socket, QByteArray &buffer);
    void send(QTcpSocket *socket, const Answer &answer);

    QHash<QByteArray, Answer> m_answers;
    QList<Request> m_requests;
    QStringList m_complaints;
    int m_connections = 0;
    qint64 m_bytesSent = 0;
};
