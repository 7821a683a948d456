#include "api/KQHttpManager.h"

#include "api/FreshConnections.h"
#include "base/DebugLine.h"
#include "base/Deployment.h"
#include "base/FirstFrame.h"
#include "base/ReplyEnvelope.h"
#include "installer/Operating.h"
#include "settings/DataManager.h"

#include <QJsonDocument>
#include <QLocale>
#include <QTimer>

#include <utility>

namespace {

constexpr int lookupRetryDelay = 3000; // milliseconds

// A discovery file is one line, a lookup's answer a few. Nothing watches the time of these
// requests, so a longer body is cut, which counts as an error of that reply.
constexpr qint64 directSizeLimit = 1024LL * 1024;

} // namespace

void KQHttpManager::getDomainNameFromWeb()
{
    m_discovery.end(this);
    if (m_dataManager->getIsTestMode()) {
        m_baseAddress = m_testDomainName;
        m_dataManager->setDomainName(m_baseAddress);
        m_dataManager->setTestDomainName(m_testDomainName);
        emit domainNameFromWebStatus(true);
        return;
    }
    FirstFrame::then(this, [this] {
        m_discovery.end(this);
        for (const QString &address : qAsConst(Deployment::current().mirrorAddresses)) {
            httpRequestDirect(address);
        }
    });
}

void KQHttpManager::requestWebAddress()
{
    FirstFrame::then(this, [this] { httpRequestDirect(m_ipLookupAddress); });
}

void KQHttpManager::httpRequestDirect(const QString &url)
{
    if (url.isEmpty()) {
        return;
    }
    const QNetworkRequest request{QUrl(url)};
    QNetworkReply *reply = nullptr;
    if (url == m_ipLookupAddress) {
        reply = m_connections->getFresh(request);
    } else {
        m_replyHandled = false;
        reply = m_connections->getShared(request);
        m_discovery.add(reply);
    }
    connect(reply, &QNetworkReply::readyRead, reply, [reply] {
        if (reply->bytesAvailable() > directSizeLimit) {
            reply->abort();
        }
    });
    connect(reply, &QNetworkReply::finished, this, &KQHttpManager::replyReadyReadDirect);
}

// Whatever lies at the lookup address is a lookup, except the mirrors: the lookup address may be a
// part of theirs.
bool KQHttpManager::isLookupAddress(const QString &url) const
{
    return !m_ipLookupAddress.isEmpty() && url.contains(m_ipLookupAddress)
        && !Deployment::current().mirrorAddresses.contains(url);
}

void KQHttpManager::replyReadyReadDirect()
{
    debugLine() << "请求网页-------------------->";
    m_replyHandled = true;
    auto *reply = qobject_cast<QNetworkReply *>(sender());
    if (reply == nullptr) {
        return;
    }
    reply->deleteLater();
    const QString url = reply->url().toString();
    const bool isLookup = !m_discovery.take(reply) || isLookupAddress(url);
    const bool hasFailed =
        isLookup ? reply->error() != QNetworkReply::NoError : !Discovery::hasAnswered(*reply);
    if (hasFailed) {
        debugLine() << "====>应答错误:" << url << " " << reply->errorString();
        if (isLookup) {
            dealLookupError();
        }
        return;
    }
    const QByteArray body = reply->readAll();
    debugLine() << (isLookup ? m_ipLookupAddress : url) << "返回:" << body;
    if (isLookup) {
        dealLookupAnswer(body);
    } else {
        dealDiscoveryFile(body);
    }
}

void KQHttpManager::dealDiscoveryFile(const QByteArray &body)
{
    m_baseAddress = Discovery::addressIn(body);
    m_dataManager->setDomainName(m_baseAddress);
    debugLine() << "域名:" << m_baseAddress;
    m_discovery.end(this);
    emit domainNameFromWebStatus(true);
}

void KQHttpManager::dealLookupError()
{
    debugLine() << "应答错误，则再次请求" << m_ipLookupAddress;
    if (m_ipCheck.countError() == IpCheck::Verdict::Retry) {
        retryLookup();
        return;
    }
    const QString message = QStringLiteral("应答错误");
    emit sendGetIpIsProxyIp(false, message + m_ipLookupAddress, message);
}

void KQHttpManager::dealLookupAnswer(const QByteArray &body)
{
    const QJsonDocument document = QJsonDocument::fromJson(body);
    if (!document.isObject()) {
        return;
    }
    if (!m_ipCheck.isFirstLookup()) {
        debugLine() << "获取代理的公网IP";
    }
    const IpCheck::Verdict verdict = m_ipCheck.answered(document.object());
    switch (verdict) {
    case IpCheck::Verdict::OwnAddress:
        debugLine() << "本机公网IP:" << m_ipCheck.ownAddress();
        break;
    case IpCheck::Verdict::Retry:
        debugLine() << "如果获取到的IP还是公网IP，则再次进行获取";
        retryLookup();
        break;
    default:
        emit sendGetIpIsProxyIp(verdict == IpCheck::Verdict::Proxied, QString::fromUtf8(body),
            m_ipCheck.exitAddress().ip);
    }
}

void KQHttpManager::retryLookup()
{
    auto *timer = new QTimer(this);
    timer->setSingleShot(true);
    connect(timer, &QTimer::timeout, this, &KQHttpManager::requestWebAddress);
    connect(timer, &QTimer::timeout, timer, &QObject::deleteLater);
    timer->start(lookupRetryDelay);
}

void KQHttpManager::dealWebAddress(QJsonObject &object)
{
    debugLine() << "dealWebAddress:" << object;
}

int KQHttpManager::getGetMyIPNum() const { return m_ipCheck.retries(); }

void KQHttpManager::setGetMyIPNum(int value) { m_ipCheck.setRetries(value); }

void KQHttpManager::resetGetMyIPNum() { m_ipCheck.setRetries(0); }

void KQHttpManager::checkRegion() { post(Request::CheckRegion); }

void KQHttpManager::dealCheckRegion(QJsonObject &object)
{
    debugLine() << "dealCheckRegion:" << object;
    const QJsonObject data = dataOf(object);
    if (!succeeded(object) || data.value(QLatin1String("wl")).toInt() == 1) {
        emit sendIsChinaIp(false);
        return;
    }
    emit sendIsChinaIp(!Operating::EnableIPInBackCh(textOf(data, "ip")));
}

void KQHttpManager::getLocalLanguage()
{
    struct Row {
        const char *name;
        int language; // QLocale::Language
        int index;
    };
    // 178 is the number that the product has always known Russian by. It is not QLocale::Russian,
    // so a Russian system keeps the default language; the scenes and the other clients count on it.
    static constexpr Row rows[] = {
        {"英文", QLocale::English, 0},
        {"中文", QLocale::Chinese, 1},
        {"印度尼西亚", QLocale::Indonesian, 2},
        {"俄语", 178, 3},
        {"德文", QLocale::German, 4},
    };
    const int language = QLocale().language();
    for (const Row &row : rows) {
        if (row.language == language) {
            debugLine() << "系统语言:" << row.name;
            emit sendDefaultLanguage(row.index);
            return;
        }
    }
}
