#include "LoopbackServer.h"
#include "Spies.h"
#include "Support.h"
#include "api/KQHttpManager.h"
#include "base/Deployment.h"
#include "settings/DataManager.h"

#include <QtQml>

#include <sys/stat.h>
#include <unistd.h>

using Manager = KQHttpManager;

namespace {

// What the client keeps of a session.
struct Session {
    QString session;
    QString radiusUserName;
    QString radiusPasswd;
    QString rd;
    int uid;
    QString userName;
    bool isLoggedIn;
    bool isVisitorSession;
    bool isVisitorLogin;
};

bool operator==(const Session &one, const Session &other)
{
    const auto tied = [](const Session &it) {
        return std::tie(it.session, it.radiusUserName, it.radiusPasswd, it.rd, it.uid, it.userName,
            it.isLoggedIn, it.isVisitorSession, it.isVisitorLogin);
    };
    return tied(one) == tied(other);
}

struct Call {
    QString call; // as a scene writes it
    QByteArray path;
    QString form;
    QString reply;
    QString heard;
};

struct SessionReply {
    void (Manager::*deal)(QJsonObject &);
    bool isVisitor;
    QString reply;
    Session kept;
    QString heard;
    bool signsInAgain;
};

struct Download {
    int kind;
    QString installPath; // in the directory of the test
    LoopbackServer::Answer answer;
    QString file;
    QByteArray content;
    QFileDevice::Permissions permissions;
};

struct RefusedAddress {
    QString url;
};

struct InTheWay {
    std::function<bool(const QString &)> put;
};

} // namespace

class TestClientCore : public QObject {
    Q_OBJECT

private:
    DataManager &settings = *DataManager::getInstance();
    std::unique_ptr<QTemporaryDir> directory;
    std::unique_ptr<LoopbackServer> server;
    std::unique_ptr<Manager> manager;
    Spies spies; // on the manager

    void deal(void (Manager::*handler)(QJsonObject &), const QString &reply)
    {
        QJsonObject object = QJsonDocument::fromJson(json(reply)).object();
        (manager.get()->*handler)(object);
    }

    void download(const QString &path, int kind)
    {
        manager->httpRequestFile(server->baseAddress() + path, kind);
    }

    bool isBusy() const { return !manager->findChildren<QNetworkReply *>().isEmpty(); }

    Session kept() const
    {
        const UserInfo info = settings.getUserInfo();
        return {info.getSession(), info.getRadiusUserName(), info.getRadiusPasswd(), info.getRd(),
            info.getUid(), settings.getUserName(), settings.getIsLoginStatus(),
            settings.getIsVisitorLoginStatus(), settings.getIsVisitorLogin()};
    }

private slots:
    void init()
    {
        directory = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir::setCurrent(directory->path()));
        server = std::make_unique<LoopbackServer>();
        Deployment::current().ipLookupAddress.clear();
        settings.setDomainName(server->baseAddress());
        settings.setInstallPath(QString());
        settings.setUserInfo(UserInfo());
        settings.setUserName("me");
        settings.setUserPassword("pw");
        settings.setUserNickName("N");
        settings.setUserGoogleId("G7");
        settings.setUserGooglePicture("p");
        settings.setIsLoginStatus(false);
        settings.setIsVisitorLoginStatus(true);
        settings.setSoftVersion("7");
        settings.setSoftShowVersion("1.0.7");
        manager = std::make_unique<Manager>();
        spies = spiesOn(manager.get());
    }

    void cleanup() { QCOMPARE(server->complaints, QStringList()); }

    void callsSendTheirFormAndReport_data()
    {
        const Rows<Call> row;
        row("login",
            {"userLogin('ü@b.c','p w')", "/api/account/login", " email=ü@b.c password=p w",
                "{'msg':'hi','data':{'session':'s'}}", "loginStatus(true,hi,-1)"});
        row("visitor login",
            {"userVisitorLogin()", "/api/account/visitor_login", "", "{'code':1,'msg':'no'}",
                "visitorLoginStatus(false,no,0)"});
        row("registration",
            {"userRegister('a','pw','12')", "/api/account/register", " code=12 email=a password=pw",
                "{'msg':'hi'}", "registerStatus(true,hi,-1)"});
        row("activation, a position that is no text",
            {"userRegisterActive('a','')", "/api/account/register_active", " email=a password=",
                "{'code':2000,'data':{'error_position':1}}", "registerActiveStatus(false,,0)"});
        row("new password, a negative position",
            {"findPasswd('a','pw','12')", "/api/account/forget", " code=12 email=a password=pw",
                "{'code':5,'data':{'error_position':'-3'}}", "findPasswdStatus(false,,-3)"});
        row("code by e-mail, a position that is no number",
            {"getEmailCode('a','reg')", "/api/account/getemailcode", " email=a code_type=reg",
                "{'code':5,'data':{'error_position':'x'}}", "getEmailCodeStatus(false,,0)"});
        row("Google login",
            {"thirdLogin('google')", "/api/account/third_login",
                " platform=google email=me nickname=N guid=G7 avatar=p", "{'msg':'hi'}",
                "loginStatus(true,hi,-1)"});
        row("Facebook login",
            {"thirdLogin('facebook')", "/api/account/third_login",
                " platform=facebook email=me nickname=N fuid=G7 avatar=p", "{'code':3}",
                "loginStatus(false,,0)"});
        row("account refused",
            {"getUserInfoAfterLogin()", "/api/account/get_info", "",
                "{'code':4,'msg':'outer','data':{'msg':'inner'}}", "userInfoStatus(false,inner)"});
        row("no update",
            {"checkUpdate()", "/api/system/updateInfo", "", "{'code':1,'data':{'version':9}}",
                "updateInfoStatus(true,true,false,1.0.7,,7)"});
        row("update",
            {"checkUpdate()", "/api/system/updateInfo", "",
                "{'data':{'force':'true','version':9,'version_show':'1.1','content':'new'}}",
                "updateInfoStatus(true,false,true,1.1,new,9)"});
        row("no hot update",
            {"checkIsNeedHotUpdate()", "/api/system/hot_update", "", "{'code':1}",
                "hotUpdateStatus(false,-1)"});
        row("unknown hot update",
            {"checkIsNeedHotUpdate()", "/api/system/hot_update", "",
                "{'data':{'type':3,'url':'nowhere'}}", "hotUpdateStatus(true,3)"});
        row("feedback on a line loses its last comma",
            {"feedBack('3,5,','c','2','','a','p','r')", "/api/system/feedback",
                " tag=3,5 content=c type=2 linkman={'email':'me'} props=p rate=r",
                "{'code':0,'msg':'thanks'}", "feedBackStatus(true,thanks)"});
        row("feedback, a quote in the address",
            {"feedBack('3,5,','c','1','a\\'b','a','p','r')", "/api/system/feedback",
                " tag=3,5, content=c type=1 linkman={'email':'a'b'} props=p rate=r",
                "{'code':1,'msg':'no'}", "feedBackStatus(false,no)"});
        row("questions, no list",
            {"getLineFeedBackQuestion()", "/api/system/questions", "", "{'code':0,'data':7}",
                "sendLineFeedBackQuestions(true,success)"});
        row("catalogue refused",
            {"getAllLineInfo()", "/api/server/get_all_v2", "", "{'code':1,'msg':'no'}",
                "lineInfoStatus(false,no)"});
        row("line search",
            {"getLineInfo('Ber')", "/api/server/get_all_v2", " word=Ber", "{'msg':'ok','data':[]}",
                "lineInfoStatus(true,ok)"});
    }

    void callsSendTheirFormAndReport()
    {
        const auto [call, path, form, reply, heard] = Rows<Call>::fetch();
        server->answer(path, {json(reply)});
        QQmlEngine engine;
        QQmlExpression(engine.rootContext(), manager.get(), json(call)).evaluate();
        QCOMPARE(server->take(path).form, "POST" + json(form));
        QTRY_COMPARE(written(spies), heard);
    }

    void repliesChangeTheSession_data()
    {
        const Rows<SessionReply> row;
        const QString session = "{'data':{'session':'s'}}";
        const QString refused = "{'code':1,'data':{'session':'s','error_position':'2'}}";
        const QString expired = "{'code':2000,'data':{'session':'s','msg':'old'}}";
        const QString account = "'data':{'username':'ru','radius_pass':'rp','rd':'r','uid':5,"
                                "'email':'e'";
        const Session guest{"old", "", "", "", 0, "me", false, true, true};
        row("login",
            {&Manager::dealUserLoginInfo, true, session,
                {"s", "", "", "", 0, "me", false, true, false}, "loginStatus(true,,-1)", false});
        row("login refused",
            {&Manager::dealUserLoginInfo, true, refused, guest, "loginStatus(false,,2)", false});
        row("login expired",
            {&Manager::dealUserLoginInfo, false, expired,
                {"", "", "", "", 0, "me", false, true, false}, "", true});
        row("login of a guest expired",
            {&Manager::dealUserLoginInfo, true, expired,
                {"", "", "", "", 0, "me", false, true, false}, "", false});
        row("visitor login",
            {&Manager::dealUserVisitorLoginInfo, true, session,
                {"s", "", "", "", 0, "me", false, true, true}, "visitorLoginStatus(true,,-1)",
                false});
        row("visitor login expired",
            {&Manager::dealUserVisitorLoginInfo, true, expired,
                {"", "", "", "", 0, "me", false, true, false}, "", false});
        row("bound account",
            {&Manager::dealUserInfo, true, "{" + account + ",'is_visitor':0}}",
                {"old", "ru", "rp", "r", 5, "e", true, false, false}, "userInfoStatus(true,)",
                false});
        row("guest account",
            {&Manager::dealUserInfo, true, "{" + account + ",'is_visitor':1}}",
                {"old", "ru", "rp", "r", 5, "e", false, true, true}, "userInfoStatus(true,)",
                false});
        row("account, nothing said about guests",
            {&Manager::dealUserInfo, true, "{" + account + "}}",
                {"old", "ru", "rp", "r", 5, "e", false, true, true}, "userInfoStatus(true,)",
                false});
        row("account expired",
            {&Manager::dealUserInfo, false, expired, {"", "", "", "", 0, "me", false, true, false},
                "", true});
        row("account of a guest expired",
            {&Manager::dealUserInfo, true, expired, {"", "", "", "", 0, "me", false, true, false},
                "userInfoStatus(false,old)", false});
    }

    void repliesChangeTheSession()
    {
        const SessionReply row = Rows<SessionReply>::fetch();
        settings.setIsVisitorLogin(row.isVisitor);
        const QByteArray path = "/api/account/login";
        server->answer(path, {json("{'msg':'again'}")});
        UserInfo remembered; // of a settings file: this manager has not seen it
        remembered.setSession("old");
        settings.setUserInfo(remembered);
        deal(row.deal, row.reply);
        QVERIFY(kept() == row.kept);
        QCOMPARE(written(spies), row.heard);
        QCOMPARE(isBusy(), row.signsInAgain);
        if (row.signsInAgain) {
            QVERIFY(spies.at("loginStatus").wait());
            QCOMPARE(written(spies), QString("loginStatus(true,again,-1)"));
            QCOMPARE(server->take(path).form, QByteArray("POST email=me password=pw"));
        }
    }

    void signingOutKeepsWhatAnotherManagerStored()
    {
        Manager other;
        QJsonObject account{{"data", QJsonObject{{"username", "ru"}, {"uid", 5}}}};
        other.dealUserInfo(account);
        deal(&Manager::dealUserLoginInfo, "{'data':{'session':'s'}}");
        QCOMPARE(kept().uid, 5);
        other.signOut();
        QCOMPARE(kept().session, QString());
        QCOMPARE(kept().radiusUserName, QString("ru"));
    }

    void aStoredSessionSendsNothing()
    {
        deal(&Manager::dealUserLoginInfo, "{'data':{'session':'s'}}");
        settings.setIsVisitorLoginStatus(false);
        spies.at("loginStatus").clear();
        manager->userLogin("a", "b");
        manager->userVisitorLogin();
        QCOMPARE(written(spies),
            "loginStatus(true,login success,-1) visitorLoginStatus(true,login success,-1)");
        QVERIFY(settings.getIsVisitorLoginStatus() && !isBusy());
    }

    void updatesAreStored()
    {
        settings.setIsNeedUpdate(false);
        deal(&Manager::dealUpdateInfo, "{'code':0,'data':{}}");
        deal(&Manager::dealHotUpdate, "{'code':0,'data':{}}");
        QCOMPARE(written(spies), QString());
        QVERIFY(!settings.getIsNeedUpdate() && settings.getSoftVersion() == "7");
        deal(&Manager::dealUpdateInfo,
            "{'data':{'force':true,'url':' h a/ c ','version':'9','version_show':'1.1'}}");
        QCOMPARE(written(spies), QString("updateInfoStatus(true,false,false,1.1,,0)"));
        QCOMPARE(settings.getDownloadUpdateUrl(), "ha/c");
        QVERIFY(settings.getIsNeedUpdate() && contentOf("UpdateInfo.json").contains("ha/c"));
        server->answer("/main", {"program"});
        deal(&Manager::dealHotUpdate,
            QString("{'data':{'type':1,'version':8,'version_show':'1.0.8','url':'%1/main'}}")
                .arg(server->baseAddress()));
        QCOMPARE(settings.getSoftVersion() + settings.getSoftShowVersion(), QString("81.0.8"));
        QVERIFY(spies.at("sendDownloadFileSuccess").wait());
        QCOMPARE(contentOf("VORNTemp"), QByteArray("program"));
    }

    void downloadsAreWritten_data()
    {
        const Rows<Download> row;
        const QByteArray big(3000000, 'b');
        const auto all = QFileDevice::Permissions(0x6644);
        const auto ownersOnly = QFileDevice::Permissions(0x6600);
        row("package", {0, "", {big}, "VornInstall.run", big, all});
        row("program, with an installation path",
            {1, "/P", {"bytes"}, "P\\VORNTemp", "bytes", all});
        row("protocol", {2, "", {"bytes"}, "sarko2linuxTemp", "bytes", all});
        row("unknown kind", {3, "", {"(not there)"}, "", "(not there)", {}});
        row("nowhere to write", {1, "/no/P", {"(not there)"}, "no", "(not there)", {}});
        row("chunked",
            {1, "",
                {"3\r\nabc\r\n2\r\nde\r\n0\r\n\r\n", 200, LoopbackServer::Whole, 0,
                    "Transfer-Encoding: chunked\r\n"},
                "VORNTemp", "abcde", all});
        row("not found: success, but not for everybody's eyes",
            {0, "", {"sorry", 404}, "VornInstall.run", "sorry", ownersOnly});
        row("cut: the same",
            {1, "", {"bytes", 200, LoopbackServer::Cut}, "VORNTemp", "bytes", ownersOnly});
    }

    void downloadsAreWritten()
    {
        const auto [kind, path, answer, name, content, permissions] = Rows<Download>::fetch();
        server->answer("/file", answer);
        settings.setInstallPath(path.isEmpty() ? path : directory->path() + path);
        download("/file", kind);
        QVERIFY(server->take("/file").headers["_sign"].isEmpty());
        QTRY_VERIFY(!isBusy());
        QCOMPARE(contentOf(directory->filePath(name)), content);
        const QFileInfo file(directory->filePath(name));
        if (file.isFile()) {
            QCOMPARE(file.permissions(), permissions);
        }
        const QByteArray own = kind == 0 ? "sendDownloadAll" : "sendDownload";
        QCOMPARE(spies.at(own + "FileSuccess").size(), 1);
        QCOMPARE(spies.at(own + "UpdatePraProgress").constLast()[0], content.size());
        QVERIFY(!written(spies).contains(kind == 0 ? "sendDownloadFile" : "sendDownloadAll"));
    }

    void onlyTheWebIsDownloaded_data()
    {
        const Rows<RefusedAddress> row;
        row("a file that only root may read", {QUrl::fromLocalFile("secret").toString()});
        row("a file of this machine, in capitals", {"FILE:///etc/shadow"});
        row("data in the address", {"data:text/plain,evil"});
        row("a resource of the program", {"qrc:/main.qml"});
        row("no scheme", {"secret"});
    }

    void onlyTheWebIsDownloaded()
    {
        QVERIFY(put("secret", "secret") && put("VORNTemp", "of before"));
        manager->httpRequestFile(Rows<RefusedAddress>::fetch().url, 1);
        QVERIFY(!isBusy());
        QCOMPARE(contentOf("VORNTemp"), QByteArray("of before"));
        QCOMPARE(written(spies), QString());
    }

    void whatLiesInTheWayGivesWayToANewFile_data()
    {
        const Rows<InTheWay> row;
        row("a link", {[](const QString &name) { return QFile::link("victim", name); }});
        row("another name of a file",
            {[](const QString &name) { return ::link("victim", QFile::encodeName(name)) == 0; }});
        row("a pipe",
            {[](const QString &name) { return ::mkfifo(QFile::encodeName(name), 0666) == 0; }});
    }

    void whatLiesInTheWayGivesWayToANewFile()
    {
        QVERIFY(put("victim", "whole") && Rows<InTheWay>::fetch().put("VORNTemp"));
        server->answer("/file", {"bytes"});
        download("/file", 1);
        QTRY_VERIFY(!isBusy());
        QCOMPARE(contentOf("victim"), QByteArray("whole"));
        QVERIFY(!QFileInfo("VORNTemp").isSymLink());
        QCOMPARE(contentOf("VORNTemp"), QByteArray("bytes"));
    }

    void postsLeaveADownloadAloneAndASecondOneStopsIt()
    {
        QSignalSpy &progress = spies.at("sendDownloadUpdatePraProgress");
        server->answer("/endless", {QByteArray(10000, '1'), 200, LoopbackServer::Endless});
        server->answer("/second", {"second"});
        server->answer("/api/system/feedback", {json("{'code':0}")});
        download("/endless", 1);
        QVERIFY(progress.wait());
        manager->feedBack("", "", "", "", "", "", "");
        QVERIFY(spies.at("feedBackStatus").wait());
        QVERIFY(progress.wait());
        download("/second", 9); // an unknown kind stays with the file
        QTRY_VERIFY(!isBusy());
        QCOMPARE(contentOf("VORNTemp"), QByteArray("second"));
        QCOMPARE(spies.at("sendDownloadFileSuccess").size(), 1);

        manager->onDownloadProgress(5000000000, 1); // more than an int holds
        QCOMPARE(progress.constLast(), QVariantList({705032704, 1}));
        server->answer("/none", {{}, 404}); // success needs a size of its own
        download("/none", 1);
        QTRY_VERIFY(!isBusy());
        QCOMPARE(contentOf("VORNTemp"), QByteArray());
        QCOMPARE(spies.at("sendDownloadFileSuccess").size(), 1);
    }

    void scenesBindToTheCatalogueAndToQuestions()
    {
        QQmlEngine engine;
        engine.rootContext()->setContextProperty("manager", manager.get());
        engine.rootContext()->setContextProperty("settings", &settings);
        QQmlComponent component(&engine, VORN_SOURCE_DIR "/tests/ClientCore.qml");
        const std::unique_ptr<QObject> scene(component.create());
        QVERIFY2(scene, qPrintable(component.errorString()));

        deal(&Manager::dealLineInfo,
            "{'data':[{'name_en':'A','servers':[{'country_id':1},{'country_id':1}]},{}]}");
        const QList<QObject *> areas = manager->getLineInfoModelList();
        const auto lines = areas.constFirst()->property("items").value<QList<QObject *>>();
        QVERIFY(lines.constFirst()->setProperty("qPing", 55));
        QCOMPARE(scene->property("lines"), QVariant("A:Fastest=55,1 #1=0,1 #2=0 :"));

        const QList<QPointer<QObject>> old{areas.at(0), areas.at(1), lines.at(0), lines.at(2)};
        areas.constFirst()->setProperty("items", QVariant::fromValue(QList<QObject *>()));
        deal(&Manager::dealLineInfo, "{'code':1}");
        QCOMPARE(manager->getLineInfoModelList(), areas);
        deal(&Manager::dealLineInfo, "{'data':[{'name_en':'C'}]}");
        QCOMPARE(old.count(nullptr), 0);
        engine.collectGarbage();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(old.count(nullptr), old.size());
        QCOMPARE(scene->property("lines"), QVariant("C:"));

        deal(&Manager::dealLineFeedBackQuestion,
            "{'data':[{'id':1,'_en':'slow','_de':'langsam'},{'id':2,'_en':'dead'},3]}");
        QCOMPARE(scene->property("texts"), QVariant("1langsam,2dead,0"));
    }
};

QTEST_MAIN(TestClientCore)
#include "tst_client_core.moc"
