#include "api/KQHttpManager.h"

#include "base/DebugLine.h"
#include "base/ReplyEnvelope.h"
#include "settings/DataManager.h"

#include <QHash>
#include <QVariant>

namespace {
constexpr char linkLogNumber[] = "linkLogNumber"; // property of the reply to an upload
}

void KQHttpManager::pushLog(
    const QString &flag, const QString &type, const QString &status, const QString &info)
{
    debugLine() << "pushLog:" << flag << ":" << type << ":" << status << ":" << info;
    if (flag == QLatin1String("delay")) {
        debugLine() << "DelayMessage:" << info;
    }
    // Each event sends what the server stores for it, and nothing else of the arguments.
    const QHash<QString, Form> furtherFields{
        {QStringLiteral("p2p"), {{"status", status}, {"info", info}}},
        {QStringLiteral("language"), {{"type", type}, {"language", info}}},
        {QStringLiteral("sarko2"), {{"status", status}}},
        {QStringLiteral("delay"), {{"data", info}}},
    };
    post(Request::PushLog, Form{{"flag", flag}} + furtherFields.value(flag));
}

void KQHttpManager::dealPushLog(QJsonObject &object)
{
    if (succeeded(object)) {
        debugLine() << "推送LOG成功";
    } else {
        debugLine() << "推送LOG失败:" << object;
    }
}

void KQHttpManager::sendOperationRecord(const QString &type)
{
    post(Request::OperationRecord, {{"type", type}});
}

void KQHttpManager::dealOperationRecord(QJsonObject &object)
{
    if (!succeeded(object)) {
        debugLine() << "dealOperationRecord error:" << object;
    }
    emit sendOperationRecordStatus(succeeded(object), messageOf(object));
}

void KQHttpManager::addLineLinkInfo(int serverId, const QString &status, const QString &startOrEnd)
{
    const auto due = m_linkLog.add(serverId, status, startOrEnd, m_dataManager->getVpnModel());
    if (due) {
        sendLinkLog(*due);
    }
}

void KQHttpManager::sendLinkLog(const LineLinkInfo &record)
{
    sendPushLinkLog(record.srvid, record.status, static_cast<long>(record.start_time),
        static_cast<long>(record.end_time), record.protocol);
}

void KQHttpManager::sendPushLinkLog(
    int srvid, const QString &status, long startTime, long endTime, const QString &protocol)
{
    debugLine() << "发送连接日志:" << srvid << "[" << status << "][" << startTime << "][" << endTime
                << "][" << protocol << "]";
    LineLinkInfo record;
    record.srvid = srvid;
    record.status = status;
    record.start_time = startTime;
    record.end_time = endTime;
    record.protocol = protocol;
    const LinkLog::Number number = m_linkLog.uploadStarted(record);
    QNetworkReply *reply = post(Request::PushLinkLog,
        {{"srvid", QString::number(srvid)}, {"status", status},
            {"start_time", QString::number(startTime)}, {"end_time", QString::number(endTime)},
            {"protocol", protocol}});
    reply->setProperty(linkLogNumber, number);
}

std::optional<LinkLog::Number> KQHttpManager::linkLogNumberOf(const QNetworkReply &reply)
{
    const QVariant number = reply.property(linkLogNumber);
    return number.isValid() ? std::make_optional(number.toInt()) : std::nullopt;
}

void KQHttpManager::dealPushLinkLog(QJsonObject &object)
{
    const LinkLog::Number number = m_answeredRecord.value_or(m_linkLog.headNumber());
    if (!succeeded(object)) {
        debugLine() << "dealPushLinkLog error:" << object;
        m_linkLog.uploadRefused(number);
        emit sendPushLinkLogStatus(false, messageOf(object));
        return;
    }
    emit sendPushLinkLogStatus(true, messageOf(object));
    if (m_linkLog.size() == 0) {
        m_linkLog.uploadAccepted(number);
        return;
    }
    const auto next = m_linkLog.uploadAccepted(number);
    debugLine() << "待上传连接日志个数:" << m_linkLog.size();
    if (next) {
        debugLine() << "继续上传下一条";
        sendLinkLog(*next);
    } else if (m_linkLog.size() == 0) {
        debugLine() << "所有的线路连接记录已上传完成";
    }
}

void KQHttpManager::pushMyIpToServer()
{
    const ExitAddress &exit = m_ipCheck.exitAddress();
    post(Request::PushMyIp,
        {{"cityid", QString::number(exit.cityid)}, {"ip", exit.ip}, {"country", exit.country},
            {"area", exit.area}, {"province", exit.province}, {"city", exit.city},
            {"isp", exit.isp}});
}

void KQHttpManager::dealPushMyIp(QJsonObject &object)
{
    debugLine() << "dealPushMyIp:" << object;
    if (succeeded(object)) {
        debugLine() << "推送代理后的IP信息到服务器成功";
    } else {
        debugLine() << "dealPushMyIp error:" << object;
    }
}

void KQHttpManager::appendSearchWordList(const QString &word) { m_searchWords.append(word); }

void KQHttpManager::pushSearchLineWord()
{
    const QString words = m_searchWords.joined();
    debugLine() << "搜索列表:" << words;
    if (!words.isEmpty()) {
        post(Request::PushSearchLineWord, {{"word", words}});
    }
}

void KQHttpManager::dealPushSearchLineWord(QJsonObject &object)
{
    debugLine() << "dealPushSearchLineWord:" << object;
    if (succeeded(object)) {
        m_searchWords.clear();
        debugLine() << "推送搜索线路word成功";
    } else {
        debugLine() << "dealPushSearchLineWord error:" << object;
    }
}

void KQHttpManager::pushLanguage(int type, const QString &language)
{
    post(Request::PushLanguage, {{"type", QString::number(type)}, {"language", language}});
}

void KQHttpManager::dealPushLanguage(QJsonObject &object)
{
    if (succeeded(object)) {
        debugLine() << "推送语言切换成功";
    } else {
        debugLine() << "推送语言切换失败:" << object;
    }
}

void KQHttpManager::getDownloadLink(const QString &email)
{
    post(Request::DownloadLink, {{"email", email}});
}

void KQHttpManager::dealDownloadLink(QJsonObject &object)
{
    debugLine() << "dealDownloadLink:" << object;
    emit sendDownloadLinkStatus(succeeded(object));
}
