#include "api/KQHttpManager.h"

#include "api/FreshConnections.h"
#include "api/QReplyTimeout.h"
#include "api/RequestSignature.h"
#include "base/DebugLine.h"
#include "settings/DataManager.h"

#include <QJsonDocument>
#include <QJsonParseError>
#include <QMetaEnum>

#include <algorithm>
#include <ctime>

namespace {

constexpr int replyTimeOut = 10000; // milliseconds

// A session or a name with a line break in it, from a reply or a settings file, would add headers
// of its own to the request.
QByteArray onOneLine(QByteArray value)
{
    const auto isBreak = [](char c) { return c == '\r' || c == '\n' || c == '\0'; };
    if (std::any_of(value.cbegin(), value.cend(), isBreak)) {
        value.truncate(
            static_cast<int>(std::remove_if(value.begin(), value.end(), isBreak) - value.begin()));
    }
    return value;
}

RequestHeaders headersOf(const QNetworkRequest &request)
{
    RequestHeaders headers;
    const QList<QByteArray> names = request.rawHeaderList();
    headers.reserve(names.size());
    for (const QByteArray &name : names) {
        headers.append({name, request.rawHeader(name)});
    }
    return headers;
}

// What is longer is no answer; the catalogue of the whole world takes 4 MB.
qint64 sizeLimitOf(const QString &url)
{
    constexpr qint64 mebibyte = 1 << 20;
    const bool isCatalogue = url.endsWith(QLatin1String(endpointOf(Request::AllLines).path));
    return (isCatalogue ? 16 : 8) * mebibyte;
}

// Counts what has arrived: a buffer of the size alone lets through what comes in the same moment.
void limitSize(QNetworkReply *reply, qint64 limit)
{
    // Qt fills the buffer in blocks of up to 128 KiB, and now and then waits for ever before the
    // last one. With less room than this a body that is too long would not reach the limit.
    constexpr qint64 roomBehindTheLimit = 1 << 20;
    // A reply whose request has not been sent yet would lose the size of its buffer.
    QObject::connect(reply, &QNetworkReply::metaDataChanged, reply,
        [reply, limit] { reply->setReadBufferSize(limit + roomBehindTheLimit); });
    QObject::connect(reply, &QNetworkReply::readyRead, reply, [reply, limit] {
        if (reply->bytesAvailable() > limit) {
            reply->abort();
        }
    });
}

// While its buffer is limited Qt now and then takes a connection that breaks off for the end of the
// body, and the scene would wait for ever.
QNetworkReply::NetworkError errorOf(const QNetworkReply &reply, const QByteArray &body)
{
    const qint64 promised = reply.header(QNetworkRequest::ContentLengthHeader).toLongLong();
    const bool isCut = reply.error() == QNetworkReply::NoError && body.size() < promised;
    return isCut ? QNetworkReply::RemoteHostClosedError : reply.error();
}

} // namespace

RequestHeaders KQHttpManager::commonHeaders() const
{
    const QByteArray projectName = QByteArrayLiteral("vornvpn");
    const UserInfo user = m_dataManager->getUserInfo();
    RequestHeaders headers;
    headers.reserve(15);
    const auto set = [&headers](const QByteArray &name, QByteArray value) {
        headers.append({name, onOneLine(std::move(value))});
    };
    set(QByteArrayLiteral("_device_os"), m_dataManager->getSystemType().toLocal8Bit());
    set(QByteArrayLiteral("_language"), m_dataManager->getSoftUseLanguage().toLocal8Bit());
    set(QByteArrayLiteral("_os_version"), m_osVersion);
    set(QByteArrayLiteral("_oem"), QByteArrayLiteral("default"));
    set(QByteArrayLiteral("_prj_name"), projectName);
    // The server knows the device by its salt, so the salt is the same in every request.
    set(QByteArrayLiteral("_salt"), m_mac);
    set(QByteArrayLiteral("_sn"), m_mac);
    set(QByteArrayLiteral("_session"), user.getSession().toLocal8Bit());
    if (user.getUid() != 0) {
        set(QByteArrayLiteral("_uid"), QByteArray::number(user.getUid()));
    }
    debugLine() << "_username:" << user.getRadiusUserName();
    set(QByteArrayLiteral("_username"), user.getRadiusUserName().toLocal8Bit());
    set(QByteArrayLiteral("_timestamp"),
        QByteArray::number(static_cast<qint64>(std::time(nullptr))));
    set(QByteArrayLiteral("_version"), m_dataManager->getSoftVersion().toLocal8Bit());
    set(QByteArrayLiteral("_version_show"), m_dataManager->getSoftShowVersion().toLocal8Bit());
    set(QByteArrayLiteral("_brand"), projectName);
    const QString channel = m_dataManager->getChannel();
    if (!channel.isEmpty()) {
        debugLine() << "渠道:" << channel;
    }
    set(QByteArrayLiteral("_channel"),
        channel.isEmpty() ? QByteArrayLiteral("official") : channel.toLocal8Bit());
    return headers;
}

void KQHttpManager::createHttpHeader(QNetworkRequest &request)
{
    const bool isFresh = request.rawHeaderList().isEmpty();
    const RequestHeaders headers = commonHeaders();
    for (const auto &[name, value] : headers) {
        request.setRawHeader(name, value);
    }
    // Whatever else the request carries is signed too; reading all of them back takes long.
    const QByteArray text = signatureText(isFresh ? headers : headersOf(request));
    debugLine() << "sign:" << QString::fromLocal8Bit(text);
    request.setRawHeader(QByteArrayLiteral("_sign"), signatureOf(text));
}

void addFormData(QHttpMultiPart *multiPart, const QString &name, const QByteArray &value)
{
    QHttpPart part;
    part.setHeader(QNetworkRequest::ContentDispositionHeader,
        QString(QLatin1String("form-data; name=\"") + name + QLatin1Char('"')));
    part.setBody(value);
    multiPart->append(part);
}

void KQHttpManager::addFormData(
    QHttpMultiPart *multiPart, const QString &name, const QByteArray &value)
{
    ::addFormData(multiPart, name, value);
}

QNetworkReply *KQHttpManager::post(Request request, const Form &form)
{
    auto *multiPart = new QHttpMultiPart(QHttpMultiPart::FormDataType);
    for (const auto &[name, value] : form) {
        addFormData(multiPart, QString::fromLatin1(name), value.toUtf8());
    }
    return send(m_baseAddress + QLatin1String(endpointOf(request).path), multiPart);
}

void KQHttpManager::httpRequestFormdate(const QString &url, QHttpMultiPart *multiPart)
{
    send(url, multiPart);
}

QNetworkReply *KQHttpManager::send(const QString &url, QHttpMultiPart *multiPart)
{
    debugLine() << "接口请求:" << url;
    m_replyHandled = false;
    QNetworkRequest request{QUrl(url)};
    createHttpHeader(request);
    QNetworkReply *reply = m_connections->post(request, multiPart);
    limitSize(reply, sizeLimitOf(url));
    connect(reply, &QNetworkReply::finished, this, &KQHttpManager::replyReadyRead);
    auto *watchdog = new QReplyTimeout(reply, replyTimeOut);
    connect(watchdog, &QReplyTimeout::timeout, this, [this, url, reply] {
        if (const auto number = linkLogNumberOf(*reply)) {
            // An address of before is sent again by nobody.
            findEndpointOfUrl(url) == nullptr ? m_linkLog.uploadFailed(*number)
                                              : m_linkLog.uploadTimedOut(*number);
        }
        dealReplyTimeOut(url);
        disconnect(reply, &QNetworkReply::finished, this, &KQHttpManager::replyReadyRead);
        reply->deleteLater();
        reply->abort();
    });
    return reply;
}

void KQHttpManager::replyReadyRead()
{
    m_replyHandled = true;
    auto *reply = qobject_cast<QNetworkReply *>(sender());
    if (reply == nullptr) {
        return;
    }
    const auto record = linkLogNumberOf(*reply);
    m_answeredRecord = record;
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    debugLine() << "接口应答状态：" << status;
    const QByteArray body = reply->readAll();
    const QNetworkReply::NetworkError error = errorOf(*reply, body);
    if (error != QNetworkReply::NoError) {
        const QString url = reply->url().toString();
        debugLine() << url << "<应答错误:"
                    << QMetaEnum::fromType<QNetworkReply::NetworkError>().valueToKey(error)
                    << "><code:" << status << ">";
        if (url.contains(QLatin1String(endpointOf(Request::PushLinkLog).path))) {
            m_linkLog.uploadFailed(record.value_or(LinkLog::stranger));
        }
        emit getHttpCode(status);
    } else {
        dealJsonData(reply, body);
        // What could not be parsed or routed is as good as lost.
        if (record && m_linkLog.isOnWire(*record)) {
            m_linkLog.uploadFailed(*record);
        }
    }
    m_answeredRecord.reset();
    reply->abort();
    reply->deleteLater();
}

void KQHttpManager::dealJsonData(QNetworkReply *reply, const QByteArray &body)
{
    QJsonParseError error{};
    QJsonObject object = QJsonDocument::fromJson(body, &error).object();
    if (error.error != QJsonParseError::NoError) {
        debugLine() << "错误的应答数据:" << object;
        return;
    }
    const QString url = reply->url().toString();
    debugLine() << "应答接口:" << url << body;
    if (object.isEmpty()) {
        debugLine() << "返回数据转json为空------------------------>";
        return;
    }
    const Endpoint *endpoint = findEndpointOfUrl(url);
    if (endpoint == nullptr) {
        debugLine() << "无效接口------------------------>";
        return;
    }
    if (endpoint->request == Request::RegisterActive) {
        debugLine() << "registerActiveInterface:";
    }
    (this->*endpoint->deal)(object);
}

void KQHttpManager::dealReplyTimeOut(const QString &url)
{
    debugLine() << "请求超时" << url;
    const Endpoint *endpoint = findEndpointOfUrl(url);
    if (endpoint == nullptr || endpoint->timeOutName == nullptr) {
        return;
    }
    if (endpoint->request == Request::PushLinkLog) {
        debugLine() << "上传线路连接记录超时，继续上传本次记录";
        if (const auto record = m_linkLog.head()) {
            sendLinkLog(*record);
        }
    }
    emit sendTimeOutInterface(QString::fromLatin1(endpoint->timeOutName));
}

const Endpoint *KQHttpManager::findEndpointOfUrl(const QString &url) const
{
    return url.startsWith(m_baseAddress) ? findEndpoint(QStringView(url).mid(m_baseAddress.size()))
                                         : nullptr;
}
