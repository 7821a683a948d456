#include "api/FreshConnections.h"

#include <QHttpMultiPart>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>

#include <algorithm>

namespace {

bool hasRunningReply(const QNetworkAccessManager *manager)
{
    const auto replies =
        manager->findChildren<QNetworkReply *>(QString(), Qt::FindDirectChildrenOnly);
    return std::any_of(replies.cbegin(), replies.cend(),
        [](const QNetworkReply *reply) { return reply->isRunning(); });
}

// Left alone, Qt asks for compressed replies and unpacks them whole, whatever the limit of the
// buffer: 2 MB from the network can become 2 GB. It also hides the size of a packed download.
QNetworkRequest uncompressed(QNetworkRequest request)
{
    request.setRawHeader(QByteArrayLiteral("Accept-Encoding"), QByteArrayLiteral("identity"));
    return request;
}

} // namespace

FreshConnections::FreshConnections(QObject *parent)
    : QObject(parent)
{
}

QNetworkReply *FreshConnections::post(const QNetworkRequest &request, QHttpMultiPart *form)
{
    renew(&QNetworkAccessManager::clearConnectionCache);
    QNetworkReply *reply = m_current->post(uncompressed(request), form);
    form->setParent(reply);
    return reply;
}

QNetworkReply *FreshConnections::getFresh(const QNetworkRequest &request)
{
    renew(&QNetworkAccessManager::clearAccessCache);
    return m_current->get(uncompressed(request));
}

QNetworkReply *FreshConnections::getShared(const QNetworkRequest &request)
{
    if (!m_current) {
        m_current = createManager();
    }
    return m_current->get(uncompressed(request));
}

void FreshConnections::renew(void (QNetworkAccessManager::*clear)())
{
    if (!m_current) {
        m_current = createManager();
        return;
    }
    if (!hasRunningReply(m_current)) {
        (m_current->*clear)();
        return;
    }
    QNetworkAccessManager *retired = m_current;
    connect(retired, &QNetworkAccessManager::finished, retired, [retired] {
        if (!hasRunningReply(retired)) {
            retired->deleteLater();
        }
    });
    m_current = createManager();
    m_current->setCookieJar(retired->cookieJar()); // one for all: it goes with the last manager
}

QNetworkAccessManager *FreshConnections::createManager()
{
    auto *manager = new QNetworkAccessManager(this);
    manager->setProxy(QNetworkProxy(QNetworkProxy::NoProxy));
    return manager;
}
