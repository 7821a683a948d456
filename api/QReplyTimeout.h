#pragma once

#include <QBasicTimer>
#include <QObject>

class QNetworkReply;

// The watchdog of one reply: a child that dies with it. It tells, once, that the reply still runs
// after the given time (coarse: within 5 %). It never fires for a reply that has finished.
class QReplyTimeout : public QObject {
    Q_OBJECT

public:
    QReplyTimeout(QNetworkReply *reply, int milliseconds);

signals:
    void timeout();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    QNetworkReply *m_reply;
    QBasicTimer m_timer;
};
