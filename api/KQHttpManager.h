#pragma once

#include "api/Discovery.h"
#include "api/Endpoints.h"
#include "api/FileDownload.h"
#include "api/IpCheck.h"
#include "api/LinkLog.h"
#include "api/RequestSignature.h"
#include "api/SearchWordList.h"
#include "lines/LineCatalogue.h"
#include "settings/UserInfo.h"

#include <QByteArray>
#include <QHttpMultiPart>
#include <QJsonObject>
#include <QList>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QObject>
#include <QString>

#include <optional>

class DataManager;
class FreshConnections;

// The client of the server API, created by the scene. Every operation returns at once; its outcome
// arrives as the signal named after it, a time-out as sendTimeOutInterface(), a transport error as
// getHttpCode(). GUI thread only.
//
//     KQHttpManager {
//         id: server
//         onDomainNameFromWebStatus: server.getInitInfo()
//         onLoginStatus: status ? server.getUserInfoAfterLogin() : page.showError(message)
//         onSendTimeOutInterface: if (name === "login") page.showError(qsTr("No answer"))
//         Component.onCompleted: server.getDomainNameFromWeb()
//     }
//
//     server.userLogin(email, password)
class KQHttpManager : public QObject {
    Q_OBJECT
    Q_CLASSINFO("QML.Element", "KQHttpManager") // for cmake/TypeDescriptions.cmake
    Q_PROPERTY(QString testDomainName READ getTestDomainName WRITE setTestDomainName)
    Q_PROPERTY(int getMyIPNum READ getGetMyIPNum WRITE setGetMyIPNum RESET resetGetMyIPNum)

public:
    explicit KQHttpManager(QObject *parent = nullptr);
    ~KQHttpManager() override;

    // Transport.
    void createHttpHeader(QNetworkRequest &request);
    void addFormData(QHttpMultiPart *multiPart, const QString &name, const QByteArray &value);
    // The form goes with its reply.
    void httpRequestFormdate(const QString &url, QHttpMultiPart *multiPart);
    Q_INVOKABLE void httpRequestDirect(const QString &url); // unsigned GET
    void dealJsonData(QNetworkReply *reply, const QByteArray &body);
    void dealReplyTimeOut(const QString &url);

    // Discovery, region, initialisation.
    Q_INVOKABLE void getDomainNameFromWeb();
    Q_INVOKABLE void requestWebAddress();
    Q_INVOKABLE void checkRegion();
    Q_INVOKABLE void getLocalLanguage();
    Q_INVOKABLE void getInitInfo();
    Q_INVOKABLE QString getTestDomainName() const;
    Q_INVOKABLE void setTestDomainName(const QString &value);

    // Account.
    Q_INVOKABLE void userLogin(const QString &email, const QString &password);
    Q_INVOKABLE void userVisitorLogin();
    Q_INVOKABLE void userRegister(
        const QString &email, const QString &password, const QString &code);
    Q_INVOKABLE void userRegisterActive(const QString &email, const QString &password);
    Q_INVOKABLE void findPasswd(const QString &email, const QString &password, const QString &code);
    Q_INVOKABLE void getEmailCode(const QString &email, const QString &codeType);
    Q_INVOKABLE void thirdLogin(const QString &platform);
    Q_INVOKABLE void getUserInfoAfterLogin();
    Q_INVOKABLE void signOut();

    // Updates and downloads.
    Q_INVOKABLE void checkUpdate();
    Q_INVOKABLE void checkIsNeedHotUpdate();
    Q_INVOKABLE void downloadUpdateFile(const QString &url);
    Q_INVOKABLE void httpRequestFile(const QString &url, int kind);

    // Telemetry.
    Q_INVOKABLE void pushLog(
        const QString &flag, const QString &type, const QString &status, const QString &info);
    Q_INVOKABLE void sendOperationRecord(const QString &type);
    Q_INVOKABLE void addLineLinkInfo(
        int serverId, const QString &status, const QString &startOrEnd);
    Q_INVOKABLE void sendPushLinkLog(
        int srvid, const QString &status, long startTime, long endTime, const QString &protocol);
    Q_INVOKABLE void pushMyIpToServer();
    Q_INVOKABLE int getGetMyIPNum() const;
    Q_INVOKABLE void setGetMyIPNum(int value);
    Q_INVOKABLE void resetGetMyIPNum();
    Q_INVOKABLE void appendSearchWordList(const QString &word);
    Q_INVOKABLE void pushSearchLineWord();
    Q_INVOKABLE void pushLanguage(int type, const QString &language);
    Q_INVOKABLE void getDownloadLink(const QString &email);

    // Feedback.
    Q_INVOKABLE void feedBack(QString tag, const QString &content, const QString &type,
        const QString &linkman, const QString &attachment, const QString &props,
        const QString &rate);
    Q_INVOKABLE void getLineFeedBackQuestion();

    // Line catalogue.
    Q_INVOKABLE void getAllLineInfo();
    Q_INVOKABLE void getLineInfo(const QString &word);
    Q_INVOKABLE QList<QObject *> getLineInfoModelList();

    // Reply handlers, called by the router with the reply's JSON object.
    void dealUserLoginInfo(QJsonObject &object);
    void dealUserVisitorLoginInfo(QJsonObject &object);
    void dealUserRegisterInfo(QJsonObject &object);
    void dealUserRegisterActiveInfo(QJsonObject &object);
    void dealFindPasswdInfo(QJsonObject &object);
    void dealEmailCodeInfo(QJsonObject &object);
    void dealUserInfo(QJsonObject &object);
    void dealUpdateInfo(QJsonObject &object);
    void dealHotUpdate(QJsonObject &object);
    void dealInitInfo(QJsonObject &object);
    void dealCheckRegion(QJsonObject &object);
    void dealWebAddress(QJsonObject &object);
    void dealPushLog(QJsonObject &object);
    void dealOperationRecord(QJsonObject &object);
    void dealPushLinkLog(QJsonObject &object);
    void dealPushMyIp(QJsonObject &object);
    void dealPushSearchLineWord(QJsonObject &object);
    void dealPushLanguage(QJsonObject &object);
    void dealDownloadLink(QJsonObject &object);
    void dealFeedBackInfo(QJsonObject &object);
    void dealLineFeedBackQuestion(QJsonObject &object);
    void dealLineInfo(QJsonObject &object);

    // Receivers of the replies' own signals.
    Q_SLOT void replyReadyRead();
    Q_SLOT void replyReadyReadDirect();
    Q_SLOT void onDownloadProgress(qint64 received, qint64 total);
    Q_SLOT void onFinished();

signals:
    void getHttpCode(int status);
    void sendTimeOutInterface(QString name);

    void domainNameFromWebStatus(bool status);
    void sendIsChinaIp(bool isChinaIp);
    void sendDefaultLanguage(int language);
    void initSystemStatus(int code);

    void loginStatus(bool status, QString message, int errorPostion);
    void visitorLoginStatus(bool status, QString message, int errorPostion);
    void registerStatus(bool status, QString message, int errorPostion);
    void registerActiveStatus(bool status, QString message, int errorPostion);
    void findPasswdStatus(bool status, QString message, int errorPostion);
    void getEmailCodeStatus(bool status, QString message, int errorPostion);
    void userInfoStatus(bool status, QString message);

    void updateInfoStatus(
        bool ok, bool latest, bool force, QString versionShow, QString content, QString version);
    void hotUpdateStatus(bool ok, int type);
    void sendDownloadUpdatePraProgress(int received, int total);
    void sendDownloadFileSuccess();
    void sendDownloadAllUpdatePraProgress(int received, int total);
    void sendDownloadAllFileSuccess();

    void sendOperationRecordStatus(bool ok, QString msg);
    void sendPushLinkLogStatus(bool ok, QString msg);
    void sendGetIpIsProxyIp(bool flag, QString message, QString proxyip);
    void sendDownloadLinkStatus(bool ok);

    void feedBackStatus(bool status, QString message);
    void sendLineFeedBackQuestions(bool ok, QString msg);

    void lineInfoStatus(bool status, QString message);

private:
    // Names and values of the form's fields, sent as UTF-8 in this order.
    struct FormField {
        const char *name;
        QString value;
    };
    using Form = QList<FormField>;

    RequestHeaders commonHeaders() const;
    QNetworkReply *post(Request request, const Form &form = {});
    QNetworkReply *send(const QString &url, QHttpMultiPart *multiPart);
    static std::optional<LinkLog::Number> linkLogNumberOf(const QNetworkReply &reply);
    const Endpoint *findEndpointOfUrl(const QString &url) const;
    void sendLinkLog(const LineLinkInfo &record);

    bool isLookupAddress(const QString &url) const;
    void dealDiscoveryFile(const QByteArray &body);
    void dealLookupAnswer(const QByteArray &body);
    void dealLookupError();
    void retryLookup();

    void storeSession(const QString &session); // an empty one means: signed out
    void followStore(); // before every change of the own record

    DataManager *m_dataManager;
    FreshConnections *m_connections;
    QString m_baseAddress; // scheme and host, no trailing slash
    QString m_testDomainName;
    QString m_ipLookupAddress;
    QByteArray m_osVersion;
    QByteArray m_mac; // empty without an adapter
    bool m_replyHandled = true;
    Discovery m_discovery;
    IpCheck m_ipCheck;
    LinkLog m_linkLog;
    std::optional<LinkLog::Number> m_answeredRecord; // while the reply of an upload is dealt with
    SearchWordList m_searchWords;
    UserInfo m_userInfo; // follows the store before a change, which gets a copy after it
    FileDownload m_download;
    LineCatalogue m_catalogue;
};

// The same as the member, for code that has no manager at hand.
void addFormData(QHttpMultiPart *multiPart, const QString &name, const QByteArray &value);
