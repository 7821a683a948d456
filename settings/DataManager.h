#pragma once

#include "settings/CommonUsedArea.h"
#include "settings/LineFeedbackQuestion.h"
#include "settings/UpdateInfo.h"
#include "settings/UserInfo.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <initializer_list>

class QJSEngine;
class QQmlEngine;
class QTranslator;

// The process-wide settings and session state. GUI thread only. Setters store and say nothing;
// what has to survive the process is written by the file operations, when a caller asks for it:
//
//     DataManager &store = *DataManager::getInstance();
//     store.readDataFromFile(directory + QLatin1Char('/')); // false: there is no file to open
//     store.setIsBootUp(true);
//     store.writeDataToFile(directory + QLatin1Char('/'));
class DataManager : public QObject {
    Q_OBJECT
    Q_CLASSINFO("QML.Element", "DataManager") // for cmake/TypeDescriptions.cmake
    Q_CLASSINFO("QML.Singleton", "true")
    // Always empty. The scene appends it to every translated text, so that each languageChanged()
    // makes the engine evaluate, and thereby translate, all of them again.
    Q_PROPERTY(QString emptyString READ getEmptyString NOTIFY languageChanged)

public:
    // Made on first use and never deleted; the first call has to come from the GUI thread and after
    // the application object exists.
    static DataManager *getInstance();

    // Preferences and account.
    Q_INVOKABLE bool getIsBootUp() const { return isBootUp; }
    Q_INVOKABLE void setIsBootUp(bool value) { isBootUp = value; }
    Q_INVOKABLE bool getIsMinToTray() const { return isMinToTray; }
    Q_INVOKABLE void setIsMinToTray(bool value) { isMinToTray = value; }
    Q_INVOKABLE bool getIsAutoLogin() const { return isAutoLogin; }
    Q_INVOKABLE void setIsAutoLogin(bool value) { isAutoLogin = value; }
    Q_INVOKABLE QString getUserName() const { return userName; }
    Q_INVOKABLE void setUserName(const QString &value) { userName = value; }
    Q_INVOKABLE QString getUserPassword() const { return userPassword; }
    Q_INVOKABLE void setUserPassword(const QString &value) { userPassword = value; }
    Q_INVOKABLE bool getIsLoginStatus() const { return isLoginStatus; }
    Q_INVOKABLE void setIsLoginStatus(bool value) { isLoginStatus = value; }
    Q_INVOKABLE QString getSoftVersion() const { return softVersion; }
    Q_INVOKABLE void setSoftVersion(const QString &value) { softVersion = value; }
    Q_INVOKABLE QString getSoftShowVersion() const { return softShowVersion; }
    Q_INVOKABLE void setSoftShowVersion(const QString &value) { softShowVersion = value; }
    Q_INVOKABLE bool getIsInstallP2p() const { return isInstallP2p; }
    Q_INVOKABLE void setIsInstallP2p(bool value) { isInstallP2p = value; }
    Q_INVOKABLE int getVpnModel() const { return vpnModel; }
    Q_INVOKABLE void setVpnModel(int value) { vpnModel = value; }
    Q_INVOKABLE bool getIsPushPingLog() const { return isPushPingLog; }
    Q_INVOKABLE void setIsPushPingLog(bool value) { isPushPingLog = value; }
    Q_INVOKABLE bool getIsNeedUpdate() const { return isNeedUpdate; }
    Q_INVOKABLE void setIsNeedUpdate(bool value) { isNeedUpdate = value; }
    Q_INVOKABLE bool getIsPopupTips() const { return isPopupTips; }
    Q_INVOKABLE void setIsPopupTips(bool value) { isPopupTips = value; }
    Q_INVOKABLE bool getIsFeedbackLine() const { return isFeedbackLine; }
    Q_INVOKABLE void setIsFeedbackLine(bool value) { isFeedbackLine = value; }
    Q_INVOKABLE QString getAppStoreDownloadUrl() const { return appStoreDownloadUrl; }
    Q_INVOKABLE void setAppStoreDownloadUrl(const QString &value) { appStoreDownloadUrl = value; }
    Q_INVOKABLE QString getGooglePlayDownloadUrl() const { return googlePlayDownloadUrl; }
    Q_INVOKABLE void setGooglePlayDownloadUrl(const QString &value)
    {
        googlePlayDownloadUrl = value;
    }
    Q_INVOKABLE QString getSupportProtocols() const { return supportProtocols; }
    Q_INVOKABLE void setSupportProtocols(const QString &value) { supportProtocols = value; }
    Q_INVOKABLE int getSpeedLimit() const { return speedLimit; }
    Q_INVOKABLE void setSpeedLimit(int value) { speedLimit = value; }
    Q_INVOKABLE bool getIsVisitorLogin() const { return isVisitorLogin; }
    Q_INVOKABLE void setIsVisitorLogin(bool value) { isVisitorLogin = value; }

    // Read by the scenes, written by the C++ side only.
    Q_INVOKABLE QString getPrivacyPolicyUrl() const { return privacyPolicyUrl; }
    void setPrivacyPolicyUrl(const QString &value) { privacyPolicyUrl = value; }
    Q_INVOKABLE QString getUserAgreementUrl() const { return userAgreementUrl; }
    void setUserAgreementUrl(const QString &value) { userAgreementUrl = value; }
    Q_INVOKABLE QString getHelpListUrl() const { return helpListUrl; }
    void setHelpListUrl(const QString &value) { helpListUrl = value; }
    Q_INVOKABLE QString getNoticeListUrl() const { return noticeListUrl; }
    void setNoticeListUrl(const QString &value) { noticeListUrl = value; }
    Q_INVOKABLE QString getDomainName() const { return domainName; }
    void setDomainName(const QString &value) { domainName = value; }
    Q_INVOKABLE QString getSoftUseLanguage() const { return softUseLanguage; }
    void setSoftUseLanguage(const QString &value) { softUseLanguage = value; }
    Q_INVOKABLE int getEmailVerificationSwitch() const { return emailVerificationSwitch; }
    void setEmailVerificationSwitch(int value) { emailVerificationSwitch = value; }
    Q_INVOKABLE int getP2pSwitch() const { return p2pSwitch; }
    void setP2pSwitch(int value) { p2pSwitch = value; }
    Q_INVOKABLE QString getTcpVpnPort() const { return tcpVpnPort; }
    void setTcpVpnPort(const QString &value) { tcpVpnPort = value; }
    Q_INVOKABLE QString getUdpVpnPort() const { return udpVpnPort; }
    void setUdpVpnPort(const QString &value) { udpVpnPort = value; }
    Q_INVOKABLE QString getWssVpnPort() const { return wssVpnPort; }
    void setWssVpnPort(const QString &value) { wssVpnPort = value; }
    Q_INVOKABLE QString getDriverVpnPort() const { return driverVpnPort; }
    void setDriverVpnPort(const QString &value) { driverVpnPort = value; }
    Q_INVOKABLE QString getKcpVpnPort() const { return kcpVpnPort; }
    void setKcpVpnPort(const QString &value) { kcpVpnPort = value; }
    Q_INVOKABLE QString getVornVpnPort() const { return vornVpnPort; }
    void setVornVpnPort(const QString &value) { vornVpnPort = value; }
    Q_INVOKABLE double getDpiScale() const { return dpiScale; }
    void setDpiScale(double value) { dpiScale = value; }
    void getSystemDpiScale(); // stores the scale of the primary screen
    Q_INVOKABLE QString getSystemType() const { return systemType; }
    void setSystemType(const QString &value) { systemType = value; }
    Q_INVOKABLE QString getSarkoVersion() const { return sarkoVersion; }
    void setSarkoVersion(const QString &value) { sarkoVersion = value; }
    Q_INVOKABLE QString getSarkoVersionCode() const { return sarkoVersionCode; }
    void setSarkoVersionCode(const QString &value) { sarkoVersionCode = value; }
    Q_INVOKABLE bool getIsTestMode() const { return isTestMode; }
    void setIsTestMode(bool value) { isTestMode = value; }
    Q_INVOKABLE int getCurrentLanguageIndex() const { return currentLanguageIndex; }
    void setCurrentLanguageIndex(int value) { currentLanguageIndex = value; }
    Q_INVOKABLE QString getUserGoogleId() const { return userGoogleId; }
    void setUserGoogleId(const QString &value) { userGoogleId = value; }
    Q_INVOKABLE QString getUserGooglePicture() const { return userGooglePicture; }
    void setUserGooglePicture(const QString &value) { userGooglePicture = value; }
    Q_INVOKABLE QString getUserNickName() const { return userNickName; }
    void setUserNickName(const QString &value) { userNickName = value; }
    Q_INVOKABLE bool getIsVisitorLoginStatus() const { return isVisitorLoginStatus; }
    void setIsVisitorLoginStatus(bool value) { isVisitorLoginStatus = value; }
    Q_INVOKABLE QString getDownloadUpdateUrl() const { return updateInfo.updateUrl; }
    Q_INVOKABLE QString getDownloadUpdateVersion() const { return updateInfo.versionShow; }
    QString getInstallPath() const { return installPath; }
    Q_INVOKABLE void setInstallPath(const QString &value) { installPath = value; }

    // Not visible to the scenes.
    QString getTestDomainName() const { return testDomainName; }
    void setTestDomainName(const QString &value) { testDomainName = value; }
    QString getChannel() const { return channel; }
    void setChannel(const QString &value) { channel = value; }
    UserInfo getUserInfo() const { return userInfo; }
    void setUserInfo(const UserInfo &value) { userInfo = value; }
    UpdateInfo getUpdateInfo() const { return updateInfo; }
    void setUpdateInfo(const UpdateInfo &value) { updateInfo = value; }
    QList<LineFeedbackQuestion> getLineFeedbackQuestionList() const
    {
        return lineFeedbackQuestionList;
    }
    void setLineFeedbackQuestionList(const QList<LineFeedbackQuestion> &value)
    {
        lineFeedbackQuestionList = value;
    }
    QList<CommonUsedArea> getCommonUsedAreaList() const { return commonUsedAreaList; }
    void setCommonUsedAreaList(const QList<CommonUsedArea> &value) { commonUsedAreaList = value; }
    QString getEmptyString() const { return {}; }

    // Language. An index outside 0..4 means English.
    Q_INVOKABLE QStringList getLanguageList() const; // as shown, by index
    Q_INVOKABLE void changeLanguage(int languageIndex);
    Q_INVOKABLE int languageTypeTransToInt(const QString &type) const;
    Q_INVOKABLE QString languageTypeTransToString(int type) const; // empty outside 0..4

    // Files. path is put before the file's name as it stands, so a directory ends in "/". A writer
    // returns true whatever happened; a reader returns false when its file cannot be opened
    // (readChannel: true). What cannot be parsed changes nothing.
    Q_INVOKABLE bool writeDataToFile(const QString &path);
    Q_INVOKABLE bool readDataFromFile(const QString &path);
    Q_INVOKABLE bool writeVersionInfoToFile(const QString &path);
    Q_INVOKABLE bool readVersionInfoFromFile(const QString &path);
    Q_INVOKABLE bool writeCommonUsedLineToFile(const QString &path);
    Q_INVOKABLE bool readCommonUsedLineFromFile(const QString &path); // appends to what is there
    Q_INVOKABLE bool writeUpdateInfoToFile(const UpdateInfo &info); // into the working directory
    Q_INVOKABLE bool readUpdateInfoFromFile(); // from the working directory
    Q_INVOKABLE bool readChannel(const QString &path);

    // Frequently used lines.
    Q_INVOKABLE void changeLineUsedNum(int lineId, const QString &lineArea);
    Q_INVOKABLE void deleteCommonUsedLine(int lineId); // kept as an entry point; does nothing

    // Feedback questions in the given language ("_en", "_de", ...). The objects belong to the
    // store; the next call releases them.
    Q_INVOKABLE QList<QObject *> getLineFeekbackQuestionByLauguage(const QString &language);

    // Sign-in results that the browser hands back. False when the text is not one of its kind.
    Q_INVOKABLE bool analysisGoogleInfo(const QString &info);
    Q_INVOKABLE bool analysisFacebookInfo(const QString &info);

    // Relay from the single-instance message channel to the scene.
    Q_SLOT void externMessageReceived(const QString &message);

signals:
    void languageChanged();
    void sendExternMessageReceived(const QString &message);

private:
    struct Tables;
    struct SignInField;

    DataManager();
    void fillLanguageNames();
    void sortCommonUsedAreas();
    void takeSignInFields(const QString &text, std::initializer_list<SignInField> known);
    QString getSession() const { return userInfo.getSession(); }
    void setSession(const QString &value) { userInfo.setSession(value); }

    UpdateInfo updateInfo;
    UserInfo userInfo;
    QString softVersion = QStringLiteral("1");
    QString softShowVersion = QStringLiteral("1.0.1");
    QString softUseLanguage;
    bool isVisitorLoginStatus = false;
    bool isLoginStatus = false;
    bool isBootUp = false;
    bool isMinToTray = true;
    bool isAutoLogin = true;
    bool isNeedUpdate = false;
    bool isPopupTips = true;
    bool isFeedbackLine = true;
    QString supportProtocols = QLatin1String("");
    int emailVerificationSwitch = 1;
    int p2pSwitch = 1;
    bool isInstallP2p = false;
    bool isPushPingLog = false;
    bool isVisitorLogin = true;
    QString userName;
    QString userPassword;
    QString userGoogleId;
    QString userGooglePicture;
    QString userNickName;
    QString domainName;
    QString testDomainName;
    QString privacyPolicyUrl;
    QString userAgreementUrl;
    QString helpListUrl;
    QString noticeListUrl;
    QStringList languageNames;
    QString channel = QLatin1String("");
    QString installPath;
    int vpnModel = 0;
    QString tcpVpnPort = QStringLiteral("3102");
    QString udpVpnPort = QStringLiteral("3101");
    QString wssVpnPort = QStringLiteral("3103");
    QString driverVpnPort = QStringLiteral("5000");
    QString kcpVpnPort = QStringLiteral("2000");
    QString vornVpnPort = QStringLiteral("5000");
    QString appStoreDownloadUrl;
    QString googlePlayDownloadUrl;
    double dpiScale = 1.0;
    QString sarkoVersion;
    QString sarkoVersionCode;
    int speedLimit = 2;
    QString systemType = QStringLiteral("linux");
    QList<LineFeedbackQuestion> lineFeedbackQuestionList;
    QList<CommonUsedArea> commonUsedAreaList;
    bool isTestMode = false;
    int currentLanguageIndex = 0;
    QList<QObject *> m_questionsForQml; // children of this object
    QList<QTranslator *> m_translators; // one for each change of language, never removed
};

// Provider of the QML singleton. The engine does not own what it returns.
QObject *virtualDataManager(QQmlEngine *engine, QJSEngine *scriptEngine);
