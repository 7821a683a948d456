#include "api/KQHttpManager.h"

#include "base/DebugLine.h"
#include "base/ReplyEnvelope.h"
#include "base/TunnelMode.h"
#include "installer/Operating.h"
#include "settings/DataManager.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr int codeRegionRefused = 1000;

struct TextSetting {
    const char *key;
    void (DataManager::*store)(const QString &value);
};

constexpr TextSetting pageAddresses[] = {
    {"private_agreement", &DataManager::setPrivacyPolicyUrl},
    {"service_agreement", &DataManager::setUserAgreementUrl},
    {"wap_article_help_list", &DataManager::setHelpListUrl},
    {"wap_article_notice_list", &DataManager::setNoticeListUrl},
};

constexpr TextSetting shopAddresses[] = {
    {"app_store_download_url", &DataManager::setAppStoreDownloadUrl},
    {"google_play_download_url", &DataManager::setGooglePlayDownloadUrl},
};

struct Port {
    const char *key;
    void (DataManager::*store)(const QString &value);
    QString (DataManager::*stored)() const;
    const char *label;
};

// The server sends the UDP port as "upd".
constexpr Port ports[] = {
    {"tcp", &DataManager::setTcpVpnPort, &DataManager::getTcpVpnPort, "tcpPort:"},
    {"upd", &DataManager::setUdpVpnPort, &DataManager::getUdpVpnPort, "udpPort:"},
    {"wss", &DataManager::setWssVpnPort, &DataManager::getWssVpnPort, "wssPort:"},
    {"vorn", &DataManager::setVornVpnPort, &DataManager::getVornVpnPort, "vornPort:"},
    {"driver", &DataManager::setDriverVpnPort, &DataManager::getDriverVpnPort, "dirverPort:"},
    {"kcp", &DataManager::setKcpVpnPort, &DataManager::getKcpVpnPort, "kcpPort:"},
};

constexpr int linuxDefaultMode = 1; // sarko2-udp
constexpr int linuxHighestMode = 2; // Linux has the two sarko2 tunnels only

void storeDefaultMode(DataManager &settings, const QString &word)
{
    const auto *const proposed = std::find_if(std::begin(tunnelModes), std::end(tunnelModes),
        [&word](const TunnelMode &row) { return word == QLatin1String(row.word); });
    int mode = proposed == std::end(tunnelModes) ? 0 : proposed->number;
    if (settings.getSystemType() == QLatin1String("linux") && mode > linuxHighestMode) {
        mode = linuxDefaultMode;
    }
    settings.setVpnModel(mode);
}

void storeWhenPresent(DataManager &settings, const QJsonObject &object, const char *key,
    void (DataManager::*store)(const QString &value))
{
    const QJsonValue value = object.value(QLatin1String(key));
    if (!value.isUndefined()) {
        (settings.*store)(value.toString());
    }
}

} // namespace

void KQHttpManager::getInitInfo()
{
    // The server counts the other way round: "1" stands for an installation that is not the first.
    post(Request::Init,
        {{"is_first_install", QString::number(Operating::isFirstInstall() ? 0 : 1)}});
}

void KQHttpManager::dealInitInfo(QJsonObject &object)
{
    const int code = codeOf(object);
    if (code != 0) {
        if (code == codeRegionRefused) {
            debugLine() << "地区限制，不可以使用此软件";
            emit initSystemStatus(codeRegionRefused);
        }
        return;
    }
    debugLine() << "dealInitInfo:" << object;
    const QJsonObject data = dataOf(object);
    DataManager &settings = *m_dataManager;
    for (const TextSetting &address : pageAddresses) {
        (settings.*address.store)(textOf(data, address.key));
    }
    settings.setEmailVerificationSwitch(textOf(data, "email_verification_switch").toInt());
    if (settings.getVpnModel() == 0) {
        storeDefaultMode(settings, textOf(data, "default_mode"));
    }
    settings.setP2pSwitch(textOf(data, "p2p_switch").toInt());
    const QJsonObject portsSent = data.value(QLatin1String("srv_ports")).toObject();
    for (const Port &port : ports) {
        storeWhenPresent(settings, portsSent, port.key, port.store);
    }
    for (const TextSetting &address : shopAddresses) {
        storeWhenPresent(settings, data, address.key, address.store);
    }
    settings.setSupportProtocols(textOf(data, "support_protocols"));
    for (const Port &port : ports) {
        debugLine() << port.label << (settings.*port.stored)();
    }
    emit initSystemStatus(code);
}
