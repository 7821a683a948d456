#include "api/QReplyTimeout.h"

#include <QNetworkReply>
#include <QTimerEvent>

QReplyTimeout::QReplyTimeout(QNetworkReply *reply, int milliseconds)
    : QObject(reply)
    , m_reply(reply)
{
    if (reply->isRunning()) {
        m_timer.start(milliseconds, this);
    }
}

void QReplyTimeout::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_timer.timerId()) {
        QObject::timerEvent(event);
        return;
    }
    m_timer.stop();
    if (m_reply->isRunning()) {
        emit timeout();
    }
}
