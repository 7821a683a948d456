#include "LoopbackServer.h"
#include "Spies.h"
#include "Support.h"
#include "api/KQHttpManager.h"
#include "base/Deployment.h"
#include "settings/DataManager.h"

#include <QtQml>

using M = KQHttpManager;
using Handler = void (M::*)(QJsonObject &);
using Operation = Table<QString, QString, QString, QString, QString>;
using Session = Table<Handler, bool, QString, QString, QString>;
using Download = Table<int, QString, LoopbackServer::Answer, QString, QByteArray>;

class TestClientCore : public QObject {
    Q_OBJECT

private:
    DataManager &settings = *DataManager::getInstance();
    std::unique_ptr<QTemporaryDir> directory;
    std::unique_ptr<LoopbackServer> server;
    std::unique_ptr<M> manager;
    Spies spies; // on the manager

    void deal(Handler handler, const QString &reply)
    {
        QJsonObject object = QJsonDocument::fromJson(json(reply)).object();
        (manager.get()->*handler)(object);
    }

    void download(const QString &path, int kind)
    {
        manager->httpRequestFile(server->baseAddress() + path, kind);
    }

    bool isBusy() const { return !manager->findChildren<QNetworkReply *>().isEmpty(); }

    // The session record, then the flags: logged in, visitor session, visitor login.
    QString session() const
    {
        const UserInfo info = settings.getUserInfo();
        const QVariantList values{info.getSession(), info.getRadiusUserName(),
            info.getRadiusPasswd(), info.getRd(), info.getUid(), settings.getUserName(),
            int{settings.getIsLoginStatus()}, int{settings.getIsVisitorLoginStatus()},
            int{settings.getIsVisitorLogin()}};
        return QVariant(values).toStringList().join(',');
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
        manager = std::make_unique<M>();
        spies = spiesOn(manager.get());
    }

    void cleanup() { QCOMPARE(server->complaints, QStringList()); }

    void operationsSendTheirFormAndReport_data()
    {
        // clang-format off
        const Operation row; // as a scene calls it, its path, form and reply, what is emitted
        row("login", "userLogin('ü@b.c','p w')", "account/login", " email=ü@b.c password=p w", "{'msg':'hi','data':{'session':'s'}}", "loginStatus(true,hi,-1)");
        row("visitor login", "userVisitorLogin()", "account/visitor_login", "", "{'code':1,'msg':'no'}", "visitorLoginStatus(false,no,0)");
        row("registration", "userRegister('a','pw','12')", "account/register", " code=12 email=a password=pw", "{'msg':'hi'}", "registerStatus(true,hi,-1)");
        row("activation", "userRegisterActive('a','')", "account/register_active", " email=a password=", "{'code':2000,'data':{'error_position':1}}", "registerActiveStatus(false,,0)");
        row("new password", "findPasswd('a','pw','12')", "account/forget", " code=12 email=a password=pw", "{'code':5,'data':{'error_position':'-3'}}", "findPasswdStatus(false,,-3)");
        row("code by e-mail", "getEmailCode('a','reg')", "account/getemailcode", " email=a code_type=reg", "{'code':5,'data':{'error_position':'x'}}", "getEmailCodeStatus(false,,0)");
        row("Google login", "thirdLogin('google')", "account/third_login", " platform=google email=me nickname=N guid=G7 avatar=p", "{'msg':'hi'}", "loginStatus(true,hi,-1)");
        row("Facebook login", "thirdLogin('facebook')", "account/third_login", " platform=facebook email=me nickname=N fuid=G7 avatar=p", "{'code':3}", "loginStatus(false,,0)");
        row("another login", "thirdLogin('Google')", "account/third_login", " platform=Google email=me nickname=N avatar=p", "{'code':0}", "loginStatus(true,,-1)");
        row("account", "getUserInfoAfterLogin()", "account/get_info", "", "{'code':4,'msg':'outer','data':{'msg':'inner'}}", "userInfoStatus(false,inner)");
        row("no update", "checkUpdate()", "system/updateInfo", "", "{'code':1,'data':{'version':9}}", "updateInfoStatus(true,true,false,1.0.7,,7)");
        row("update", "checkUpdate()", "system/updateInfo", "", "{'data':{'force':'true','version':9,'version_show':'1.1','content':'new'}}",
            "updateInfoStatus(true,false,true,1.1,new,9)");
        row("no hot update", "checkIsNeedHotUpdate()", "system/hot_update", "", "{'code':1}", "hotUpdateStatus(false,-1)");
        row("unknown hot update", "checkIsNeedHotUpdate()", "system/hot_update", "", "{'data':{'type':3,'url':'nowhere'}}", "hotUpdateStatus(true,3)");
        row("feedback on a line", "feedBack('3,5,','c','2','','a','p','r')", "system/feedback",
            " tag=3,5 content=c type=2 linkman={'email':'me'} props=p rate=r", "{'code':0,'msg':'thanks'}", "feedBackStatus(true,thanks)");
        row("feedback", "feedBack('3,5,','c','1','a\\'b','a','p','r')", "system/feedback",
            " tag=3,5, content=c type=1 linkman={'email':'a'b'} props=p rate=r", "{'code':1,'msg':'no'}", "feedBackStatus(false,no)");
        row("questions, no list", "getLineFeedBackQuestion()", "system/questions", "", "{'code':0,'data':7}", "sendLineFeedBackQuestions(true,success)");
        row("catalogue refused", "getAllLineInfo()", "server/get_all_v2", "", "{'code':1,'msg':'no'}", "lineInfoStatus(false,no)");
        row("line search", "getLineInfo('Ber')", "server/get_all_v2", " word=Ber", "{'msg':'ok','data':[]}", "lineInfoStatus(true,ok)");
        // clang-format on
    }

    void operationsSendTheirFormAndReport()
    {
        const auto [call, path, form, reply, emitted] = Operation::fetch();
        server->answer("/api/" + path.toUtf8(), {json(reply)});
        QQmlEngine engine;
        QQmlExpression(engine.rootContext(), manager.get(), json(call)).evaluate();
        QCOMPARE(server->take("/api/" + path.toUtf8()).form, "POST" + json(form));
        QVERIFY(spies.at(emitted.section('(', 0, 0).toUtf8()).wait());
        QCOMPARE(written(spies), emitted);
    }

    void repliesChangeTheSession_data()
    {
        // clang-format off
        const Session row; // handler, visitor, reply, session, emitted
        const QString session = "{'data':{'session':'s'}}";
        const QString expired = "{'code':2000,'data':{'session':'s','msg':'old'}}";
        const QString account = "{'msg':'m','data':{'username':'ru','radius_pass':'rp','rd':'r','uid':5,'email':'e'";
        row("login", &M::dealUserLoginInfo, true, session, "s,,,,0,me,0,1,0", "loginStatus(true,,-1)");
        row("login refused", &M::dealUserLoginInfo, true, "{'code':1,'data':{'session':'s','error_position':'2'}}", "o,,,,0,me,0,1,1", "loginStatus(false,,2)");
        row("login expired", &M::dealUserLoginInfo, false, expired, ",,,,0,me,0,1,0", "login");
        row("login of a guest expired", &M::dealUserLoginInfo, true, expired, ",,,,0,me,0,1,0", "");
        row("visitor login", &M::dealUserVisitorLoginInfo, true, session, "s,,,,0,me,0,1,1", "visitorLoginStatus(true,,-1)");
        row("visitor login expired", &M::dealUserVisitorLoginInfo, true, expired, ",,,,0,me,0,1,0", "");
        row("bound account", &M::dealUserInfo, true, account + ",'is_visitor':0}}", "o,ru,rp,r,5,e,1,0,0", "userInfoStatus(true,)");
        row("guest account", &M::dealUserInfo, true, account + ",'is_visitor':1}}", "o,ru,rp,r,5,e,0,1,1", "userInfoStatus(true,)");
        row("account", &M::dealUserInfo, true, account + "}}", "o,ru,rp,r,5,e,0,1,1", "userInfoStatus(true,)");
        row("account without data", &M::dealUserInfo, true, "{'code':0}", "o,,,,0,,0,1,1", "userInfoStatus(true,)");
        row("account expired", &M::dealUserInfo, false, expired, ",,,,0,me,0,1,0", "login");
        row("account of a guest expired", &M::dealUserInfo, true, expired, ",,,,0,me,0,1,0", "userInfoStatus(false,old)");
        // clang-format on
    }

    void repliesChangeTheSession()
    {
        const auto [handler, isVisitor, reply, after, emitted] = Session::fetch();
        settings.setIsVisitorLogin(isVisitor);
        const QByteArray path = "/api/account/login";
        server->answer(path, {json("{'msg':'again'}")});
        deal(&M::dealUserVisitorLoginInfo, "{'data':{'session':'o'}}");
        spies = spiesOn(manager.get());
        deal(handler, reply);
        QCOMPARE(session(), after);
        QCOMPARE(isBusy() ? "login" : written(spies), emitted);
        if (isBusy()) {
            QVERIFY(spies.at("loginStatus").wait());
            QCOMPARE(written(spies), QString("loginStatus(true,again,-1)"));
            QCOMPARE(server->take(path).form, QByteArray("POST email=me password=pw"));
        }
        manager->signOut();
        QCOMPARE(session(), after.mid(after.indexOf(',')));
    }

    void aStoredSessionSendsNothing()
    {
        deal(&M::dealUserLoginInfo, "{'data':{'session':'s'}}");
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
        deal(&M::dealUpdateInfo, "{'code':0,'data':{}}");
        deal(&M::dealHotUpdate, "{'code':0,'data':{}}");
        QCOMPARE(written(spies), QString());
        QVERIFY(!settings.getIsNeedUpdate() && settings.getSoftVersion() == "7");
        deal(&M::dealUpdateInfo,
            "{'data':{'force':true,'url':' h a/ c ','version':'9','version_show':'1.1'}}");
        QCOMPARE(written(spies), QString("updateInfoStatus(true,false,false,1.1,,0)"));
        QCOMPARE(settings.getDownloadUpdateUrl(), "ha/c");
        QVERIFY(settings.getIsNeedUpdate() && contentOf("UpdateInfo.json").contains("ha/c"));
        server->answer("/main", {"program"});
        deal(&M::dealHotUpdate,
            QString("{'data':{'type':1,'version':8,'version_show':'1.0.8','url':'%1/main'}}")
                .arg(server->baseAddress()));
        QCOMPARE(settings.getSoftVersion() + settings.getSoftShowVersion(), QString("81.0.8"));
        QVERIFY(spies.at("sendDownloadFileSuccess").wait());
        QCOMPARE(contentOf("VORNTemp"), QByteArray("program"));
    }

    void downloadsAreWritten_data()
    {
        // clang-format off
        const Download row; // kind, installation path in the directory of the test, answer, file, content
        const QByteArray big(3000000, 'b');
        row("package", 0, "", {big}, "VornInstall.run", big);
        row("program, path", 1, "/P", {"bytes"}, "P\\VORNTemp", "bytes");
        row("protocol", 2, "", {"bytes"}, "sarko2linuxTemp", "bytes");
        row("unknown kind", 3, "", {"(not there)"}, "", "(not there)");
        row("nowhere to write", 1, "/no/P", {"(not there)"}, "no", "(not there)");
        row("chunked", 1, "", {"3\r\nabc\r\n2\r\nde\r\n0\r\n\r\n", 200, LoopbackServer::Whole, 0, "Transfer-Encoding: chunked\r\n"}, "VORNTemp", "abcde");
        row("not found", 0, "", {"sorry", 404}, "VornInstall.run", "sorry");
        row("cut", 1, "", {"bytes", 200, LoopbackServer::Cut}, "VORNTemp", "bytes");
        // clang-format on
    }

    void downloadsAreWritten()
    {
        const auto [kind, path, answer, name, content] = Download::fetch();
        server->answer("/file", answer);
        settings.setInstallPath(path.isEmpty() ? path : directory->path() + path);
        download("/file", kind);
        QVERIFY(server->take("/file").headers["_sign"].isEmpty());
        QTRY_VERIFY(!isBusy());
        QCOMPARE(contentOf(directory->filePath(name)), content);
        const QByteArray own = kind == 0 ? "sendDownloadAll" : "sendDownload";
        QCOMPARE(spies.at(own + "FileSuccess").size(), 1);
        QCOMPARE(spies.at(own + "UpdatePraProgress").constLast()[0], content.size());
        QVERIFY(!written(spies).contains(kind == 0 ? "sendDownloadFile" : "sendDownloadAll"));
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
        manager->httpRequestFile("qrc:/none", 1); // success needs a size of its own
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

        deal(&M::dealLineInfo,
            "{'data':[{'name_en':'A','servers':[{'country_id':1},{'country_id':1}]},{}]}");
        const QList<QObject *> areas = manager->getLineInfoModelList();
        const auto lines = areas.constFirst()->property("items").value<QList<QObject *>>();
        QVERIFY(lines.constFirst()->setProperty("qPing", 55));
        QCOMPARE(scene->property("lines"), QVariant("A:Fastest=55,1 #1=0,1 #2=0 :"));

        const QList<QPointer<QObject>> old{areas.at(0), areas.at(1), lines.at(0), lines.at(2)};
        areas.constFirst()->setProperty("items", QVariant::fromValue(QList<QObject *>()));
        deal(&M::dealLineInfo, "{'code':1}");
        QCOMPARE(manager->getLineInfoModelList(), areas);
        deal(&M::dealLineInfo, "{'data':[{'name_en':'C'}]}");
        QCOMPARE(old.count(nullptr), 0);
        engine.collectGarbage();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(old.count(nullptr), old.size());
        QCOMPARE(scene->property("lines"), QVariant("C:"));

        deal(&M::dealLineFeedBackQuestion,
            "{'data':[{'id':1,'_en':'slow','_de':'langsam'},{'id':2,'_en':'dead'},3]}");
        QCOMPARE(scene->property("texts"), QVariant("1langsam,2dead,0"));
    }
};

QTEST_MAIN(TestClientCore)
#include "tst_client_core.moc"
