#pragma once

#include <QByteArray>
#include <QList>
#include <QPointer>
#include <QString>

class QNetworkReply;
class QObject;

// One round of discovery: the mirrors' replies, from the question to the first good answer. When a
// round ends, or the next one begins, every reply of it is released with its connection: a mirror
// that hangs would hold them for ever, since nothing watches its time.
class Discovery {
public:
    void add(QNetworkReply *reply);
    // Takes a reply that has finished out of the round; false when it belongs to none.
    bool take(QNetworkReply *reply);
    // The listener hears nothing more of the replies that still run.
    void end(const QObject *listener);

    // False for a transport error and for a status outside 200 to 299: a captive portal redirects.
    static bool hasAnswered(const QNetworkReply &reply);
    // What a discovery file says, trusted as it deciphers: it may be empty.
    static QString addressIn(const QByteArray &file);

private:
    QList<QPointer<QNetworkReply>> m_running;
};
