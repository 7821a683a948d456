#include "api/Discovery.h"

#include "base/DebugLine.h"
#include "crypto/Encryption.h"

#include <QNetworkReply>

#include <stdexcept>
#include <utility>

void Discovery::add(QNetworkReply *reply) { m_running.append(reply); }

bool Discovery::take(QNetworkReply *reply) { return m_running.removeOne(reply); }

void Discovery::end(const QObject *listener)
{
    const auto losers = std::exchange(m_running, {});
    for (QNetworkReply *loser : losers) {
        if (loser == nullptr) {
            continue;
        }
        loser->disconnect(listener);
        debugLine() << "replyReadyReadDirect disconnect------>" << loser->url().toString();
        loser->abort();
        loser->deleteLater();
    }
}

bool Discovery::hasAnswered(const QNetworkReply &reply)
{
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    return reply.error() == QNetworkReply::NoError && status >= 200 && status <= 299;
}

QString Discovery::addressIn(const QByteArray &file)
{
    try {
        return QString::fromStdString(Encryption().decode(file.toStdString()));
    } catch (const std::out_of_range &) {
        return {};
    }
}
