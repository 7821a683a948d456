#include <functional>

#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <QPointer>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QSignalSpy>
#include <QtTest>

#include "LoopbackServer.h"
#include "api/KQHttpManager.h"
#include "base/Deployment.h"
#include "settings/DataManager.h"

using M = KQHttpManager;
using Operation = std::function<void(M &)>;
using Handler = void (M::*)(QJsonObject &);
using Answer = LoopbackServer::Answer;
Q_DECLARE_METATYPE(Operation)
Q_DECLARE_METATYPE(Handler)
Q_DECLARE_METATYPE(Answer)

namespace {

void deal(M &manager, Handler handler, const QByteArray &reply)
{
    QJsonObject object = QJsonDocument::fromJson(reply).object();
    (manager.*handler)(object);
}

QString formOf(const LoopbackServer::Request &request)
{
    QByteArrayList fields;
    for (const auto &[name, value] : request.fields) {
        fields.append(name + '=' + value);
    }
    return QString::fromUtf8(fields.join(' '));
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

} // namespace

class TestClientCore : public QObject {
    Q_OBJECT

private:
    DataManager &settings = *DataManager::getInstance();
    std::unique_ptr<QTemporaryDir> directory;
    std::unique_ptr<LoopbackServer> server;

    QString url(const QString &path) const { return server->baseAddress() + path; }

    // The session record, then the flags: logged in, visitor session, visitor login.
    QString session() const
    {
        const UserInfo info = settings.getUserInfo();
        return QString("%1,%2,%3,%4,%5,%6 %7%8%9")
            .arg(info.getSession(), info.getRadiusUserName(), info.getRadiusPasswd(), info.getRd())
            .arg(info.getUid())
            .arg(settings.getUserName())
            .arg(settings.getIsLoginStatus())
            .arg(settings.getIsVisitorLoginStatus())
            .arg(settings.getIsVisitorLogin());
    }

private slots:
    void init()
    {
        directory = std::make_unique<QTemporaryDir>();
        QVERIFY(directory->isValid() && QDir::setCurrent(directory->path()));
        server = std::make_unique<LoopbackServer>();
        Deployment::current().ipLookupAddress.clear();
        settings.setDomainName(server->baseAddress());
        settings.setInstallPath(QString());
        settings.setUserInfo(UserInfo());
        settings.setUserName("old@b.c");
        settings.setUserPassword("secret");
        settings.setUserNickName("Nick");
        settings.setUserGoogleId("G7");
        settings.setUserGooglePicture("p.png");
        settings.setIsLoginStatus(false);
        settings.setIsVisitorLogin(true);
        settings.setIsVisitorLoginStatus(true);
        settings.setSoftVersion("7");
        settings.setSoftShowVersion("1.0.7");
    }

    void cleanup() { QCOMPARE(server->complaints(), QStringList()); }

    void operationsSendTheirFormAndReport_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<QString>("form");
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<QByteArray>("signal");
        QTest::addColumn<QVariantList>("arguments");

        const auto row = [](const char *name, const char *path, const Operation &operation,
                             const char *form, const char *reply, const char *signal,
                             const QVariantList &arguments) {
            QTest::newRow(name) << operation << QByteArray("/api/") + path << QString(form)
                                << QByteArray(reply) << QByteArray(signal) << arguments;
        };
        const char *login = SIGNAL(loginStatus(bool, QString, int));
        const char *account = SIGNAL(userInfoStatus(bool, QString));
        const char *update = SIGNAL(updateInfoStatus(bool, bool, bool, QString, QString, QString));
        const char *hotUpdate = SIGNAL(hotUpdateStatus(bool, int));
        const char *feedBack = SIGNAL(feedBackStatus(bool, QString));
        const char *lines = SIGNAL(lineInfoStatus(bool, QString));
        // clang-format off
        row("login", "account/login", [](M &m) { m.userLogin("ü@b.c", "p w"); }, "email=ü@b.c password=p w",
            R"({"code":0,"msg":"hi","data":{"session":"s"}})", login, {true, "hi", -1});
        row("login refused", "account/login", [](M &m) { m.userLogin("", ""); }, "email= password=",
            R"({"code":200,"msg":"no","data":{"error_position":"2"}})", login, {false, "no", 2});
        row("visitor login", "account/visitor_login", [](M &m) { m.userVisitorLogin(); }, "",
            R"({"code":1,"msg":"no"})", SIGNAL(visitorLoginStatus(bool,QString,int)), {false, "no", 0});
        row("registration", "account/register", [](M &m) { m.userRegister("a@b.c", "pw", "123"); }, "code=123 email=a@b.c password=pw",
            R"({"code":0,"msg":"hi"})", SIGNAL(registerStatus(bool,QString,int)), {true, "hi", -1});
        row("activation", "account/register_active", [](M &m) { m.userRegisterActive("a@b.c", "pw"); }, "email=a@b.c password=pw",
            R"({"code":2000,"msg":"no","data":{"error_position":1}})", SIGNAL(registerActiveStatus(bool,QString,int)), {false, "no", 0});
        row("new password", "account/forget", [](M &m) { m.findPasswd("a@b.c", "pw", "123"); }, "code=123 email=a@b.c password=pw",
            R"({"code":5,"msg":"no","data":{"error_position":"-3"}})", SIGNAL(findPasswdStatus(bool,QString,int)), {false, "no", -3});
        row("code by e-mail", "account/getemailcode", [](M &m) { m.getEmailCode("a@b.c", "reg"); }, "email=a@b.c code_type=reg",
            R"({"code":5,"msg":"no","data":{"error_position":"x"}})", SIGNAL(getEmailCodeStatus(bool,QString,int)), {false, "no", 0});
        row("social login, Google", "account/third_login", [](M &m) { m.thirdLogin("google"); }, "platform=google email=old@b.c nickname=Nick guid=G7 avatar=p.png",
            R"({"code":0,"msg":"hi"})", login, {true, "hi", -1});
        row("social login, Facebook", "account/third_login", [](M &m) { m.thirdLogin("facebook"); }, "platform=facebook email=old@b.c nickname=Nick fuid=G7 avatar=p.png",
            R"({"code":3,"msg":"no"})", login, {false, "no", 0});
        row("social login, another", "account/third_login", [](M &m) { m.thirdLogin("Google"); }, "platform=Google email=old@b.c nickname=Nick avatar=p.png",
            R"({"code":0})", login, {true, "", -1});
        row("account", "account/get_info", [](M &m) { m.getUserInfoAfterLogin(); }, "",
            R"({"code":0,"msg":"outer","data":{"msg":"inner"}})", account, {true, "inner"});
        row("account refused", "account/get_info", [](M &m) { m.getUserInfoAfterLogin(); }, "",
            R"({"code":4,"msg":"outer","data":{"msg":"inner"}})", account, {false, "inner"});
        row("no update", "system/updateInfo", [](M &m) { m.checkUpdate(); }, "",
            R"({"code":1,"data":{"version":9}})", update, {true, true, false, "1.0.7", "", "7"});
        row("update", "system/updateInfo", [](M &m) { m.checkUpdate(); }, "",
            R"({"code":0,"data":{"force":"true","version":9,"version_show":"1.1","content":"new"}})", update, {true, false, true, "1.1", "new", "9"});
        row("hot update refused", "system/hot_update", [](M &m) { m.checkIsNeedHotUpdate(); }, "",
            R"({"code":1})", hotUpdate, {false, -1});
        row("hot update of an unknown type", "system/hot_update", [](M &m) { m.checkIsNeedHotUpdate(); }, "",
            R"({"code":0,"data":{"type":3,"url":"nowhere"}})", hotUpdate, {true, 3});
        row("feedback on a line", "system/feedback", [](M &m) { m.feedBack("3,5,", "c", "2", "", "a", "p", "r"); },
            R"(tag=3,5 content=c type=2 linkman={"email":"old@b.c"} props=p rate=r)", R"({"code":0,"msg":"thanks"})", feedBack, {true, "thanks"});
        row("feedback", "system/feedback", [](M &m) { m.feedBack("3,5,", "c", "1", "a\"b\"", "a", "p", "r"); },
            R"(tag=3,5, content=c type=1 linkman={"email":"a"b""} props=p rate=r)", R"({"code":1,"msg":"no"})", feedBack, {false, "no"});
        row("questions, no list", "system/questions", [](M &m) { m.getLineFeedBackQuestion(); }, "",
            R"({"code":0,"data":7})", SIGNAL(sendLineFeedBackQuestions(bool,QString)), {true, "success"});
        row("catalogue refused", "server/get_all_v2", [](M &m) { m.getAllLineInfo(); }, "",
            R"({"code":1,"msg":"no"})", lines, {false, "no"});
        row("line search", "server/get_all_v2", [](M &m) { m.getLineInfo("Ber"); }, "word=Ber",
            R"({"code":0,"msg":"ok","data":[]})", lines, {true, "ok"});
        // clang-format on
    }

    void operationsSendTheirFormAndReport()
    {
        QFETCH(Operation, operation);
        QFETCH(QByteArray, path);
        QFETCH(QByteArray, reply);
        QFETCH(QByteArray, signal);
        QFETCH(QVariantList, arguments);
        server->answer(path, {reply});
        M manager;
        QSignalSpy spy(&manager, signal);
        operation(manager);
        QTEST(formOf(server->take(path)), "form");
        QVERIFY(spy.wait());
        QCOMPARE(spy, QList<QVariantList>({arguments}));
    }

    void repliesChangeTheSession_data()
    {
        QTest::addColumn<Handler>("handler");
        QTest::addColumn<bool>("isVisitor");
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<QString>("after");
        QTest::addColumn<QString>("outcome"); // emitted signals, login requests

        const QByteArray session = R"({"data":{"session":"s"}})";
        const QByteArray refusal = R"({"code":1,"data":{"session":"s"}})";
        const QByteArray expired = R"({"code":2000,"data":{"session":"s","msg":"old"}})";
        const QByteArray account =
            R"({"data":{"username":"ru","radius_pass":"rp","rd":"r","uid":5,"email":"e")";
        const auto row = [](const char *name, Handler handler, bool isVisitor,
                             const QByteArray &reply, const char *after, const char *outcome) {
            QTest::newRow(name) << handler << isVisitor << reply << after << outcome;
        };
        // clang-format off
        row("login", &M::dealUserLoginInfo, true, session, "s,,,,0,old@b.c 010", "1000");
        row("login refused", &M::dealUserLoginInfo, true, refusal, ",,,,0,old@b.c 011", "1000");
        row("login expired", &M::dealUserLoginInfo, false, expired, ",,,,0,old@b.c 010", "0001");
        row("login of a guest expired", &M::dealUserLoginInfo, true, expired, ",,,,0,old@b.c 010", "0000");
        row("visitor login", &M::dealUserVisitorLoginInfo, true, session, "s,,,,0,old@b.c 011", "0100");
        row("visitor login expired", &M::dealUserVisitorLoginInfo, true, expired, ",,,,0,old@b.c 010", "0000");
        row("bound account", &M::dealUserInfo, true, account + R"(,"is_visitor":0}})", ",ru,rp,r,5,e 100", "0010");
        row("guest account", &M::dealUserInfo, true, account + R"(,"is_visitor":1}})", ",ru,rp,r,5,e 011", "0010");
        row("account", &M::dealUserInfo, true, account + "}}", ",ru,rp,r,5,e 011", "0010");
        row("account without data", &M::dealUserInfo, true, R"({"code":0})", ",,,,0, 011", "0010");
        row("account expired", &M::dealUserInfo, false, expired, ",,,,0,old@b.c 010", "0001");
        row("account of a guest expired", &M::dealUserInfo, true, expired, ",,,,0,old@b.c 010", "0010");
        // clang-format on
    }

    void repliesChangeTheSession()
    {
        QFETCH(Handler, handler);
        QFETCH(bool, isVisitor);
        QFETCH(QByteArray, reply);
        QFETCH(QString, after);
        settings.setIsVisitorLogin(isVisitor);
        server->answer("/api/account/login", {R"({"code":0,"msg":"again"})"});
        M manager;
        QSignalSpy login(&manager, &M::loginStatus);
        QSignalSpy visitorLogin(&manager, &M::visitorLoginStatus);
        QSignalSpy account(&manager, &M::userInfoStatus);
        deal(manager, handler, reply);
        const int requests = manager.findChildren<QNetworkReply *>().size();
        QCOMPARE(session(), after);
        QTEST(QString("%1%2%3%4")
                  .arg(login.size())
                  .arg(visitorLogin.size())
                  .arg(account.size())
                  .arg(requests),
            "outcome");
        if (requests == 1) {
            QCOMPARE(formOf(server->take("/api/account/login")),
                QString("email=old@b.c password=secret"));
            QVERIFY(login.wait());
        }
        manager.signOut();
        QCOMPARE(session(), after.mid(after.indexOf(',')));
    }

    void aStoredSessionSendsNothing()
    {
        UserInfo info;
        info.setSession("s");
        settings.setUserInfo(info);
        settings.setIsVisitorLoginStatus(false);
        M manager;
        QSignalSpy login(&manager, &M::loginStatus);
        QSignalSpy visitorLogin(&manager, &M::visitorLoginStatus);
        manager.userLogin("a", "b");
        manager.userVisitorLogin();
        QCOMPARE(login + visitorLogin,
            QList<QVariantList>({{true, "login success", -1}, {true, "login success", -1}}));
        QVERIFY(settings.getIsVisitorLoginStatus());
        QVERIFY(manager.findChildren<QNetworkReply *>().isEmpty());
    }

    void updatesAreStored()
    {
        M manager;
        QSignalSpy spy(&manager, &M::updateInfoStatus);
        settings.setIsNeedUpdate(false);
        deal(manager, &M::dealUpdateInfo, R"({"code":0,"data":{}})");
        deal(manager, &M::dealHotUpdate, R"({"code":0,"data":{}})");
        QVERIFY(spy.isEmpty() && !settings.getIsNeedUpdate() && settings.getSoftVersion() == "7");
        deal(manager, &M::dealUpdateInfo,
            R"({"data":{"force":true,"url":" h a b/ c ","version":"9","version_show":"1.1"}})");
        QCOMPARE(spy.value(0), QVariantList({true, false, false, "1.1", "", "0"}));
        QCOMPARE(settings.getDownloadUpdateUrl(), QString("hab/c"));
        QVERIFY(settings.getIsNeedUpdate() && contentOf("UpdateInfo.json").contains("hab/c"));

        server->answer("/main", {"program"});
        QSignalSpy success(&manager, &M::sendDownloadFileSuccess);
        deal(manager, &M::dealHotUpdate,
            QByteArray(R"({"data":{"type":1,"version":8,"version_show":"1.0.8","url":"URL"}})")
                .replace("URL", url("/main").toUtf8()));
        QCOMPARE(settings.getSoftVersion() + settings.getSoftShowVersion(), QString("81.0.8"));
        QVERIFY(success.wait());
        QCOMPARE(contentOf("VORNTemp"), QByteArray("program"));
    }

    void downloadsAreWritten_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("installPath"); // in the test's directory
        QTest::addColumn<Answer>("answer");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("successes");

        const Answer small{"bytes"};
        const QByteArray big(3000000, 'b');
        const Answer chunked{"3\r\nabc\r\n2\r\nde\r\n0\r\n\r\n", 200, LoopbackServer::Whole, 0,
            "Transfer-Encoding: chunked\r\n"};
        const QByteArray nothing = "no file";
        // clang-format off
        QTest::newRow("package") << 0 << "" << Answer{big} << "VornInstall.run" << big << 1;
        QTest::newRow("package, path") << 0 << "/P" << small << "P\\VornInstall.run" << small.body << 1;
        QTest::newRow("program, path") << 1 << "/P" << small << "P\\VORNTemp" << small.body << 1;
        QTest::newRow("protocol") << 2 << "" << small << "sarko2linuxTemp" << small.body << 1;
        QTest::newRow("unknown kind") << 3 << "" << small << "" << nothing << 1;
        QTest::newRow("nowhere to write") << 1 << "/no/P" << small << "no" << nothing << 1;
        QTest::newRow("chunked") << 1 << "" << chunked << "VORNTemp" << QByteArray("abcde") << 1;
        QTest::newRow("empty") << 1 << "" << Answer{} << "VORNTemp" << QByteArray() << 0;
        QTest::newRow("not found") << 0 << "" << Answer{"sorry", 404} << "VornInstall.run" << QByteArray("sorry") << 1;
        QTest::newRow("cut") << 1 << "" << Answer{"bytes", 200, LoopbackServer::Cut} << "VORNTemp" << small.body << 1;
        // clang-format on
    }

    void downloadsAreWritten()
    {
        QFETCH(int, kind);
        QFETCH(QString, installPath);
        QFETCH(Answer, answer);
        QFETCH(QString, name);
        QFETCH(QByteArray, content);
        QFETCH(int, successes);
        server->answer("/file", answer);
        settings.setInstallPath(
            installPath.isEmpty() ? QString() : directory->path() + installPath);
        M manager;
        const bool isPackage = kind == 0;
        QSignalSpy success(&manager, &M::sendDownloadFileSuccess);
        QSignalSpy packageSuccess(&manager, &M::sendDownloadAllFileSuccess);
        QSignalSpy progress(&manager,
            isPackage ? &M::sendDownloadAllUpdatePraProgress : &M::sendDownloadUpdatePraProgress);
        manager.httpRequestFile(url("/file"), kind);
        QVERIFY(server->take("/file").header("_sign").isEmpty());
        QTRY_VERIFY(manager.findChildren<QNetworkReply *>().isEmpty());
        QCOMPARE(contentOf(directory->filePath(name)), content);
        QCOMPARE((isPackage ? success : packageSuccess).size(), 0);
        QCOMPARE((isPackage ? packageSuccess : success).size(), successes);
        QCOMPARE(
            progress.constLast().constFirst().toInt(), content == "no file" ? 5 : content.size());
    }

    void successNeedsASizeOfItsOwn()
    {
        server->answer("/full", {"bytes"});
        server->answer("/empty", {});
        M manager;
        QSignalSpy success(&manager, &M::sendDownloadFileSuccess);
        manager.httpRequestFile(url("/full"), 1);
        QVERIFY(success.wait());
        QSignalSpy progress(&manager, &M::sendDownloadUpdatePraProgress);
        manager.onDownloadProgress(5000000000, 1); // more than an int holds
        QCOMPARE(progress.value(0), QVariantList({705032704, 1}));
        manager.httpRequestFile(url("/empty"), 1);
        QTRY_VERIFY(manager.findChildren<QNetworkReply *>().isEmpty());
        QCOMPARE(success.size(), 1);
        QCOMPARE(contentOf("VORNTemp"), QByteArray());
    }

    void postsLeaveADownloadAloneAndASecondOneStopsIt()
    {
        server->answer("/first", {QByteArray(10000, '1'), 200, LoopbackServer::Endless});
        server->answer("/second", {"second"});
        server->answer("/api/system/feedback", {R"({"code":0})"});
        M manager;
        QSignalSpy feedback(&manager, &M::feedBackStatus);
        QSignalSpy progress(&manager, &M::sendDownloadUpdatePraProgress);
        QSignalSpy success(&manager, &M::sendDownloadFileSuccess);
        manager.httpRequestFile(url("/first"), 1);
        QVERIFY(progress.wait());
        QCOMPARE(progress.value(0).value(1), QVariant(-1));
        manager.feedBack("", "", "", "", "", "", "");
        QVERIFY(feedback.wait());
        QVERIFY(progress.wait());
        manager.httpRequestFile(url("/second"), 9); // an unknown kind stays with the file
        QVERIFY(success.wait());
        QTRY_VERIFY(manager.findChildren<QNetworkReply *>().isEmpty());
        QCOMPARE(contentOf("VORNTemp"), QByteArray("second"));
        QCOMPARE(success.size(), 1);
        QCOMPARE(manager.findChildren<QNetworkAccessManager *>().size(), 1);
    }

    void scenesBindToTheCatalogueAndToQuestions()
    {
        M manager;
        QQmlEngine engine;
        engine.rootContext()->setContextProperty("manager", &manager);
        engine.rootContext()->setContextProperty("settings", &settings);
        QQmlComponent component(
            &engine, QUrl::fromLocalFile(VORN_SOURCE_DIR "/tests/ClientCore.qml"));
        const std::unique_ptr<QObject> scene(component.create());
        QVERIFY2(scene, qPrintable(component.errorString()));

        deal(manager, &M::dealLineInfo,
            R"({"code":0,"data":[{"name_en":"A","servers":[{"country_id":"A"},{"country_id":"A"}]},{"name_en":"B"}]})");
        QCOMPARE(scene->property("names").toString(), QString("A:Fastest,A #1,A #2 B:"));
        const QList<QObject *> areas = manager.getLineInfoModelList();
        const auto lines = areas.constFirst()->property("items").value<QList<QObject *>>();
        QVERIFY(lines.constFirst()->setProperty("qPing", 55));
        QCOMPARE(scene->property("ping").toInt(), 55);

        QList<QPointer<QObject>> old(areas.cbegin(), areas.cend());
        std::copy(lines.cbegin(), lines.cend(), std::back_inserter(old));
        areas.constFirst()->setProperty("items", QVariant::fromValue(QList<QObject *>()));
        deal(manager, &M::dealLineInfo, R"({"code":1})");
        QCOMPARE(manager.getLineInfoModelList(), areas);
        deal(manager, &M::dealLineInfo, R"({"code":0,"data":[{"name_en":"C"}]})");
        QCOMPARE(old.count(nullptr), 0);
        QCOMPARE(scene->property("names").toString(), QString("C:"));
        engine.collectGarbage();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(old.count(nullptr), 5);
        QCOMPARE(scene->property("names").toString(), QString("C:"));

        deal(manager, &M::dealLineFeedBackQuestion,
            R"({"code":0,"data":[{"id":1,"_en":"slow","_de":"langsam"},{"id":2,"_en":"dead"},3]})");
        QCOMPARE(scene->property("questionTexts").toString(), QString("1langsam,2dead,0"));
    }
};

QTEST_MAIN(TestClientCore)
#include "tst_client_core.moc"
