#include "api/KQHttpManager.h"

#include "api/FreshConnections.h"
#include "base/DebugLine.h"
#include "base/ReplyEnvelope.h"
#include "settings/DataManager.h"

namespace {

constexpr int noHotUpdate = -1;

QString integerOf(const QJsonObject &object, const char *key)
{
    return QString::number(object.value(QLatin1String(key)).toInt());
}

QString incremented(const QString &number) { return QString::number(number.toInt() + qint64(1)); }

QString nextShownVersion(const QString &version)
{
    QStringList components = version.split(QLatin1Char('.'));
    components.last() = incremented(components.constLast());
    return components.join(QLatin1Char('.'));
}

} // namespace

void KQHttpManager::checkUpdate() { post(Request::CheckUpdate); }

void KQHttpManager::dealUpdateInfo(QJsonObject &object)
{
    debugLine() << "dealUpdateInfo json:" << object;
    if (!succeeded(object)) {
        // A refusal means: nothing newer.
        emit updateInfoStatus(true, true, false, m_dataManager->getSoftShowVersion(), QString(),
            m_dataManager->getSoftVersion());
        return;
    }
    const QJsonObject data = dataOf(object);
    if (data.isEmpty()) {
        return;
    }
    UpdateInfo info;
    info.force = textOf(data, "force") == QLatin1String("true");
    info.updateUrl = textOf(data, "url").remove(QLatin1Char(' '));
    info.version = integerOf(data, "version");
    info.versionShow = textOf(data, "version_show");
    m_dataManager->setUpdateInfo(info);
    m_dataManager->writeUpdateInfoToFile(info);
    m_dataManager->setIsNeedUpdate(true);
    debugLine() << "-->修改后的版本号:" << info.versionShow << "  " << info.version;
    emit updateInfoStatus(
        true, false, info.force, info.versionShow, textOf(data, "content"), info.version);
}

void KQHttpManager::checkIsNeedHotUpdate() { post(Request::HotUpdate); }

void KQHttpManager::dealHotUpdate(QJsonObject &object)
{
    debugLine() << "修改后的版本号:" << incremented(m_dataManager->getSoftVersion()) << "  "
                << nextShownVersion(m_dataManager->getSoftShowVersion());
    debugLine() << "dealHotUpdate json:" << object;
    if (!succeeded(object)) {
        emit hotUpdateStatus(false, noHotUpdate);
        return;
    }
    const QJsonObject data = dataOf(object);
    if (data.isEmpty()) {
        return;
    }
    const QString version = integerOf(data, "version");
    const QString versionShow = textOf(data, "version_show");
    m_dataManager->setSoftVersion(version);
    m_dataManager->setSoftShowVersion(versionShow);
    debugLine() << "修改后的版本号:" << version << "  " << versionShow;

    const QString url = textOf(data, "url");
    const int type = data.value(QLatin1String("type")).toInt();
    emit hotUpdateStatus(true, type);
    if (type == FileDownload::MainProgram) {
        debugLine() << "进行热更新主程序";
        httpRequestFile(url, type);
    } else if (type == FileDownload::ProtocolProgram) {
        debugLine() << "进行热更新协议程序";
        httpRequestFile(url, type);
    }
}

void KQHttpManager::downloadUpdateFile(const QString &url)
{
    httpRequestFile(url, FileDownload::FullPackage);
}

void KQHttpManager::httpRequestFile(const QString &url, int kind)
{
    const QString installPath = m_dataManager->getInstallPath();
    debugLine() << "getInstallPath:" << installPath << " type:" << kind << " url:" << url;
    m_download.stop(this);
    const QUrl address(url);
    if (!FileDownload::isAllowed(address)) {
        debugLine() << "下载地址无效:" << url;
        return;
    }
    QNetworkReply *reply = m_connections->getShared(QNetworkRequest{address});
    m_download.start(
        reply, kind, installPath, m_dataManager->getSystemType() == QLatin1String("linux"));
    connect(reply, &QNetworkReply::downloadProgress, this, &KQHttpManager::onDownloadProgress);
    connect(reply, &QNetworkReply::finished, this, &KQHttpManager::onFinished);
}

void KQHttpManager::onDownloadProgress(qint64 received, qint64 total)
{
    m_download.receive(total);
    const auto progress = m_download.kind() == FileDownload::FullPackage
        ? &KQHttpManager::sendDownloadAllUpdatePraProgress
        : &KQHttpManager::sendDownloadUpdatePraProgress;
    emit(this->*progress)(static_cast<int>(received), static_cast<int>(total));
}

void KQHttpManager::onFinished()
{
    const bool hasArrived = m_download.finish();
    if (!hasArrived) {
        return;
    }
    if (m_download.kind() == FileDownload::FullPackage) {
        emit sendDownloadAllFileSuccess();
    } else {
        emit sendDownloadFileSuccess();
    }
}
