#include "LoopbackServer.h"
#include "Manual.h"
#include "Spies.h"
#include "api/KQHttpManager.h"
#include "base/Deployment.h"
#include "settings/DataManager.h"

#include <QtQml>

#include <sys/stat.h>
#include <unistd.h>

using Manager = KQHttpManager;
using Server = LoopbackServer;
using Handler = void (Manager::*)(QJsonObject &);

namespace {

struct Download {
    int kind;
    QString installPath; // in the directory of the test
    Server::Answer answer;
    QString file;
    QByteArray content;
    mode_t mode;
};

const QString session = "{'data':{'session':'s'}}";

struct stat stateOf(const QString &name)
{
    struct stat state = {};
    lstat(QFile::encodeName(name).constData(), &state);
    return state;
}

} // namespace

class TestClientCore : public QObject {
    Q_OBJECT

private:
    DataManager &settings = *DataManager::getInstance();
    std::unique_ptr<QTemporaryDir> directory;
    std::unique_ptr<Server> server;
    std::unique_ptr<Manager> manager;
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

    QStringList facts() const
    {
        const UserInfo info = settings.getUserInfo();
        const auto flag = [](bool is) { return is ? "yes" : "no"; };
        return {"session=" + info.getSession(),
            "radius=" + info.getRadiusUserName() + '/' + info.getRadiusPasswd() + '/'
                + info.getRd(),
            "uid=" + QString::number(info.getUid()), "user=" + settings.getUserName(),
            QString("loggedIn=") + flag(settings.getIsLoginStatus()),
            QString("visitorStatus=") + flag(settings.getIsVisitorLoginStatus()),
            QString("visitor=") + flag(settings.getIsVisitorLogin())};
    }

private slots:
    void init()
    {
        directory = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir::setCurrent(directory->path()));
        server = std::make_unique<Server>();
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

    void repliesChangeTheSession_data()
    {
        const Rows<QStringList> row;
        for (const QStringList &cells : tableBelow("### What replies change"))
            row(qPrintable(cells[0] + cells[1] + cells[2]), cells);
    }

    // The record in the store comes from another manager, or from the settings of the last run.
    void repliesChangeTheSession()
    {
        const QHash<QString, Handler> handlers{{"login", &Manager::dealUserLoginInfo},
            {"visitor login", &Manager::dealUserVisitorLoginInfo},
            {"account", &Manager::dealUserInfo}};
        const QStringList cells = Rows<QStringList>::fetch();
        const auto code = [&cells](int column) { return codeIn(cells[column]).value(0); };
        const bool signsInAgain = cells[5].contains("yes");
        UserInfo stored;
        stored.setSession("old");
        stored.setRadiusUserName("a");
        stored.setRadiusPasswd("b");
        stored.setRd("c");
        stored.setUid(42);
        settings.setUserInfo(stored);
        settings.setIsVisitorLogin(cells[1].contains("yes"));
        settings.setIsVisitorLoginStatus(false);
        QStringList before = facts();
        server->answer("/api/account/login", {json("{'msg':'again'}")});

        deal(handlers[cells[0].trimmed()], code(2));
        QStringList changes;
        for (const QString &fact : facts()) {
            if (!before.contains(fact)) {
                changes.append(fact);
            }
        }
        QCOMPARE(changes.join(' '), code(3));
        QCOMPARE(written(spies), code(4));
        QCOMPARE(isBusy(), signsInAgain);
        if (signsInAgain) {
            QCOMPARE(server->take("/api/account/login").form, "POST email=me password=pw");
            QVERIFY(spies.at("loginStatus").wait());
            QCOMPARE(written(spies), "loginStatus(true,again,-1)");
        }
    }

    void signingOutEmptiesTheSessionOnly()
    {
        deal(&Manager::dealUserLoginInfo, session);
        Manager another; // which learns more about the same account
        QJsonObject reply{{"data", QJsonObject{{"username", "ru"}, {"uid", 5}}}};
        another.dealUserInfo(reply);
        const QStringList before = facts();
        manager->signOut();
        QCOMPARE(facts(), QStringList(before).replaceInStrings("session=s", "session="));
    }

    void aStoredSessionSendsNothing()
    {
        deal(&Manager::dealUserLoginInfo, session);
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
        QCOMPARE(written(spies), "updateInfoStatus(true,false,false,1.1,,0)");
        QCOMPARE(settings.getDownloadUpdateUrl(), "ha/c");
        QVERIFY(settings.getIsNeedUpdate() && contentOf("UpdateInfo.json").contains("ha/c"));
        server->answer("/main", {"program"});
        deal(&Manager::dealHotUpdate,
            QString("{'data':{'type':1,'version':8,'version_show':'1.0.8','url':'%1/main'}}")
                .arg(server->baseAddress()));
        QCOMPARE(settings.getSoftVersion(), "8");
        QCOMPARE(settings.getSoftShowVersion(), "1.0.8");
        QVERIFY(spies.at("sendDownloadFileSuccess").wait());
        QCOMPARE(contentOf("VORNTemp"), QByteArray("program"));
    }

    void downloadsAreWritten_data()
    {
        const Rows<Download> row;
        const QByteArray big(3000000, 'b');
        row("package", {0, "", {big}, "VornInstall.run", big, 0644});
        row("program, behind a backslash", {1, "/P", {"bytes"}, "P\\VORNTemp", "bytes", 0644});
        row("protocol", {2, "", {"bytes"}, "sarko2linuxTemp", "bytes", 0644});
        row("unknown kind", {3, "", {"(not there)"}, "", "(not there)", 0});
        row("nowhere to write", {1, "/no/P", {"(not there)"}, "no", "(not there)", 0});
        row("page that tells an error", {0, "", {"sorry", 404}, "VornInstall.run", "sorry", 0600});
        row("cut", {1, "", {"bytes", 200, Server::Cut}, "VORNTemp", "bytes", 0600});
    }

    void downloadsAreWritten()
    {
        const auto [kind, path, answer, name, content, mode] = Rows<Download>::fetch();
        server->answer("/file", answer);
        settings.setInstallPath(path.isEmpty() ? path : directory->path() + path);
        download("/file", kind);
        QVERIFY(server->take("/file").headers["_sign"].isEmpty());
        QTRY_VERIFY(!isBusy());
        QCOMPARE(contentOf(directory->filePath(name)), content);
        if (mode != 0) {
            QCOMPARE(stateOf(name).st_mode & 07777, mode);
        }
        const QByteArray own = kind == 0 ? "sendDownloadAll" : "sendDownload";
        QCOMPARE(spies.at(own + "FileSuccess").size(), 1);
        QCOMPARE(spies.at(own + "UpdatePraProgress").constLast()[0], content.size());
        QVERIFY(!written(spies).contains(kind == 0 ? "sendDownloadFile" : "sendDownloadAll"));
    }

    void whatLiesInTheWayIsLeftAlone_data()
    {
        const Rows<QString> row; // what plants it
        row("own file of before", "echo long, long before > VORNTemp; chmod 644 VORNTemp");
        row("link to nothing", "ln -s other VORNTemp");
        row("file with a second name", "echo secret > other; ln other VORNTemp");
        row("pipe, which nobody reads", "mkfifo VORNTemp");
        if (geteuid() == 0) {
            row("file of another user", "echo his > VORNTemp; chown 1 VORNTemp");
        }
    }

    void whatLiesInTheWayIsLeftAlone()
    {
        QCOMPARE(QProcess::execute("sh", {"-c", Rows<QString>::fetch()}), 0);
        const QByteArray other = contentOf("other");
        server->answer("/program", {"part of it", 200, Server::Endless});
        download("/program", 1);
        QVERIFY(spies.at("sendDownloadUpdatePraProgress").wait());
        const struct stat file = stateOf("VORNTemp");
        QVERIFY(S_ISREG(file.st_mode) && file.st_uid == geteuid());
        QCOMPARE(file.st_mode & 07777, mode_t(0600)); // until it is whole
        server->answer("/program", {"program"});
        download("/program", 1);
        QTRY_VERIFY(!isBusy());
        QCOMPARE(contentOf("VORNTemp"), QByteArray("program"));
        QCOMPARE(contentOf("other"), other);
    }

    void onlyTheWebIsDownloaded_data()
    {
        const Rows<QString> row;
        row("file", "file:///etc/passwd");
        row("file, in other letters", "FILE:/etc/passwd");
    }

    void onlyTheWebIsDownloaded()
    {
        deal(&Manager::dealHotUpdate,
            "{'data':{'type':1,'version':8,'url':'" + Rows<QString>::fetch() + "'}}");
        QVERIFY(!isBusy());
        QCOMPARE(written(spies), "hotUpdateStatus(true,1)");
        QVERIFY(!QFile::exists("VORNTemp"));
    }

    void postsLeaveADownloadAloneAndASecondOneStopsIt()
    {
        QSignalSpy &progress = spies.at("sendDownloadUpdatePraProgress");
        server->answer("/endless", {QByteArray(10000, '1'), 200, Server::Endless});
        server->answer("/second", {"second"});
        server->answer("/empty", {""});
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
        download("/empty", 1); // success needs a size of its own
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
