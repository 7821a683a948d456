#include "LoopbackServer.h"
#include "Manual.h"
#include "Spies.h"
#include "api/KQHttpManager.h"
#include "api/RequestSignature.h"
#include "base/Deployment.h"
#include "crypto/Encryption.h"
#include "installer/Operating.h"
#include "settings/DataManager.h"

#include <QNetworkAccessManager>
#include <QNetworkCookieJar>

#include <limits>

using Manager = KQHttpManager;
using Server = LoopbackServer;

namespace {

QByteArray enciphered(const QString &address)
{
    return QByteArray::fromStdString(Encryption().encode(address.toStdString()));
}

} // namespace

class TestApi : public QObject {
    Q_OBJECT

    std::unique_ptr<Server> server;
    DataManager &settings = *DataManager::getInstance();

    void setMirrors(const QStringList &paths)
    {
        QStringList addresses;
        for (const QString &path : paths) {
            addresses.append(path.isEmpty() ? path : server->baseAddress() + path);
        }
        Deployment::current().mirrorAddresses = addresses;
    }

private slots:
    void init()
    {
        server = std::make_unique<Server>();
        Deployment::current().apiBaseAddress = server->baseAddress();
        Deployment::current().ipLookupAddress.clear();
        settings.setDomainName(server->baseAddress());
        settings.setIsTestMode(false);
        settings.setUserInfo(UserInfo());
        settings.setChannel(QString());
    }

    void cleanup() { QCOMPARE(server->complaints, QStringList()); }

    void signatureLeavesOutWhatHasNoNameOrValue()
    {
        const QByteArray text = signatureText(
            {{"_channel", "官方"}, {"_session", ""}, {"", "x"}, {"_brand", "vornvpn"}});
        QCOMPARE(text, QByteArray("_brand=vornvpn&_channel=官方Q#pd]3Ha>wz-8&Mv"));
        QCOMPARE(signatureOf(text), QByteArray("9406cf5aa46b2329b4bdbde670d8ee43")); // md5sum's
    }

    void requestsCarryTheWholeBlockOfHeaders()
    {
        UserInfo user;
        user.setSession(QString::fromLatin1("s3ss\r\nX-Evil: 1\n\0x", 18));
        user.setUid(42);
        user.setRadiusUserName("r42");
        settings.setUserInfo(user);
        settings.setChannel("shop");
        settings.setSoftUseLanguage("_de");
        settings.setSoftVersion("7");
        settings.setSoftShowVersion("1.0.7");
        server->answer("/api/system/region", {"{}"});
        const qint64 before = QDateTime::currentSecsSinceEpoch();
        Manager manager;
        manager.checkRegion();
        auto headers = server->take("/api/system/region").headers;
        const qint64 time = headers.take("_timestamp").toLongLong();
        QVERIFY(time >= before && time <= QDateTime::currentSecsSinceEpoch());
        const QByteArray mac = Operating::getMac().value(0).toLatin1(); // of a machine that has one
        const QString system = QSysInfo::productType() + QSysInfo::productVersion();
        const QMap<QByteArray, QByteArray> expected{{"_device_os", "linux"}, {"_language", "_de"},
            {"_os_version", system.toUtf8()}, {"_oem", "default"}, {"_prj_name", "vornvpn"},
            {"_salt", mac}, {"_sn", mac}, {"_session", "s3ssX-Evil: 1x"}, {"_uid", "42"},
            {"_username", "r42"}, {"_version", "7"}, {"_version_show", "1.0.7"},
            {"_brand", "vornvpn"}, {"_channel", "shop"}, {"Accept-Encoding", "identity"}};
        for (const QByteArray &name : expected.keys()) {
            QCOMPARE(name + ": " + headers.value(name), name + ": " + expected[name]);
        }
    }

    void searchWordsAreKeptUntilTheyAreAccepted()
    {
        const QByteArray path = "/api/server/push_search_word";
        server->answer(path, {json("{'code':1}")});
        Manager manager;
        for (const char *word : {"to", "tok", "osaka", "tokyo", "toky"}) {
            manager.appendSearchWordList(word);
        }
        const auto pushedWords = [this, &manager, path] {
            manager.pushSearchLineWord();
            const QByteArray form = server->take(path).form;
            return QTest::qWaitFor(
                       [&] { return manager.findChildren<QNetworkReply *>().isEmpty(); })
                ? form
                : QByteArray("no end");
        };
        QCOMPARE(pushedWords(), "POST word=osaka,tokyo");
        server->answer(path, {json("{'code':0}")});
        QCOMPARE(pushedWords(), "POST word=osaka,tokyo");
        manager.pushSearchLineWord(); // nothing is left, and nobody is asked
        QVERIFY(manager.findChildren<QNetworkReply *>().isEmpty());
    }

    void firstMirrorThatAnswersWinsAndTheOthersAreReleased()
    {
        const QByteArray elsewhere = "Location: /elsewhere\r\n";
        server->answer("/failed", {{}, 500});
        server->answer("/portal", {enciphered("http://portal"), 302, Server::Whole, elsewhere});
        server->answer("/good", {{}, 200, Server::Held});
        server->answer("/hangs", {{}, 200, Server::Silent});
        server->answer("/api/system/region", {"{}"});
        setMirrors({"/failed", "", "/portal", "/good", "/hangs"});
        Manager manager;
        settings.setDomainName("http://stale");
        QSignalSpy found(&manager, &Manager::domainNameFromWebStatus);
        for (int round = 1; round <= 8; ++round) { // more than connections to one host
            manager.getDomainNameFromWeb();
            for (const char *path : {"/failed", "/portal", "/hangs", "/good"}) {
                QCOMPARE(server->take(path).method, QByteArray("GET"));
            }
            manager.checkRegion(); // retires the access manager while its mirrors still run
            QCOMPARE(server->take("/api/system/region").method, QByteArray("POST"));
            QCOMPARE(found.size(), round - 1); // neither a failure nor a redirect is an answer
            server->answer("/good", {enciphered(server->baseAddress())});
            QVERIFY(server->release("/good") && found.wait());
            server->answer("/good", {{}, 200, Server::Held});
            QTRY_VERIFY(manager.findChildren<QNetworkReply *>().isEmpty());
            QTRY_COMPARE(manager.findChildren<QNetworkAccessManager *>().size(), 1);
        }
        QCOMPARE(settings.getDomainName(), server->baseAddress());
    }

    void aSecondRoundOutdatesTheFirst()
    {
        server->answer("/mirror", {{}, 200, Server::Held});
        setMirrors({"/mirror"});
        Manager manager;
        QSignalSpy found(&manager, &Manager::domainNameFromWebStatus);
        manager.getDomainNameFromWeb();
        QCOMPARE(server->take("/mirror").method, QByteArray("GET"));
        manager.getDomainNameFromWeb();
        QCOMPARE(server->take("/mirror").method, QByteArray("GET"));
        server->answer("/mirror", {enciphered("http://second")});
        server->release("/mirror"); // the first one, which nobody waits for any more
        server->release("/mirror");
        QVERIFY(found.wait());
        QTRY_VERIFY(manager.findChildren<QNetworkReply *>().isEmpty());
        QCOMPARE(found.size(), 1);
        QCOMPARE(settings.getDomainName(), "http://second");
    }

    void undecipherableMirrorEmptiesTheAddress()
    {
        Manager manager;
        QSignalSpy found(&manager, &Manager::domainNameFromWebStatus);
        QSignalSpy failed(&manager, &Manager::getHttpCode);
        setMirrors({"/mirror"});
        server->answer("/mirror", {"QUFBQUFBQUFBQUFBQUFBQUFB"}); // too short for its trailers
        manager.getDomainNameFromWeb();
        QVERIFY(found.wait());
        QCOMPARE(settings.getDomainName(), QString());
        manager.checkRegion();
        QVERIFY(failed.wait());
        QCOMPARE(failed.takeFirst(), QVariantList{0});
    }

    void testModeAsksNoMirror()
    {
        settings.setIsTestMode(true);
        setMirrors({"/mirror"}); // its request would be a complaint
        Manager manager;
        manager.setTestDomainName("http://test");
        QSignalSpy spy(&manager, &Manager::domainNameFromWebStatus);
        manager.getDomainNameFromWeb();
        QVERIFY(spy.size() == 1 && manager.findChildren<QNetworkReply *>().isEmpty());
        QCOMPARE(settings.getDomainName(), "http://test");
    }

    void lookupsTellOwnAndExitAddress()
    {
        const QString own = R"({"ip":"1.1.1.1"})";
        const QString exit = R"({"ip":"2.2.2.2","cityid":7,"country":"C","area":"A","city":"T"})";
        // The lookup's address is the beginning of the mirror's.
        Deployment::current().ipLookupAddress = server->baseAddress() + "/ip";
        server->answer("/ip", {own.toUtf8()});
        server->answer("/ip/cookie.txt", {enciphered(server->baseAddress())});
        setMirrors({"/ip/cookie.txt"});
        Manager manager;
        QSignalSpy checked(&manager, &Manager::sendGetIpIsProxyIp);
        QSignalSpy found(&manager, &Manager::domainNameFromWebStatus);
        QTRY_VERIFY(manager.findChildren<QNetworkReply *>().isEmpty());
        manager.getDomainNameFromWeb();
        QVERIFY(found.wait());
        manager.setGetMyIPNum(3); // no retry is left
        manager.requestWebAddress();
        QVERIFY(checked.wait());
        server->answer("/ip", {exit.toUtf8()});
        manager.requestWebAddress();
        QVERIFY(checked.wait());
        QCOMPARE(checked, QList<QVariantList>({{false, own, "1.1.1.1"}, {true, exit, "2.2.2.2"}}));
        server->answer("/api/server/push_myip", {"{}"});
        manager.pushMyIpToServer();
        QCOMPARE(server->take("/api/server/push_myip").form,
            "POST cityid=7 ip=2.2.2.2 country=C area=A province= city=T isp=");
    }

    void lookupsAreRetriedThreeTimes()
    {
        using Verdict = IpCheck::Verdict;
        IpCheck check; // three errors in a row are tried with the hostile servers
        const QJsonObject own{{"ip", "1.1.1.1"}, {"city", "T"}};
        for (const Verdict verdict : {Verdict::OwnAddress, Verdict::Retry, Verdict::Retry,
                 Verdict::Retry, Verdict::NotProxied}) {
            QCOMPARE(check.exitAddress().city, QString()); // nothing is kept before the last one
            QCOMPARE(check.answered(own), verdict);
        }
        QCOMPARE(check.exitAddress().city, QString("T"));
        check.setRetries(std::numeric_limits<int>::max()); // which a scene may do
        QCOMPARE(check.countError(), Verdict::GiveUp);
    }

    void initRecordFillsTheSettings_data()
    {
        const Rows<QStringList> row;
        for (const QStringList &cells : tableBelow("#### What stays of a record"))
            row(qPrintable(cells[0] + cells[1]), cells);
    }

    void initRecordFillsTheSettings()
    {
        const QStringList cells = Rows<QStringList>::fetch();
        const auto code = [&cells](int column) { return codeIn(cells[column]).value(0); };
        settings.setVpnModel(code(0).toInt());
        settings.setUdpVpnPort("old");
        settings.setTcpVpnPort("old");
        settings.setAppStoreDownloadUrl("old");
        Manager manager;
        QJsonObject reply{{"data", QJsonDocument::fromJson(code(1).toUtf8()).object()}};
        manager.dealInitInfo(reply);
        QCOMPARE(QString::number(settings.getVpnModel()), code(2));
        QCOMPARE(settings.getPrivacyPolicyUrl(), code(3));
        QCOMPARE(QString("%1 %2")
                     .arg(settings.getEmailVerificationSwitch())
                     .arg(settings.getP2pSwitch()),
            code(4));
        QCOMPARE(settings.getSupportProtocols(), code(5));
        QCOMPARE(QString("%1 %2 %3")
                     .arg(settings.getUdpVpnPort(), settings.getTcpVpnPort(),
                         settings.getAppStoreDownloadUrl()),
            code(6));
    }

    void systemLanguageIsMapped()
    {
        Manager manager;
        QSignalSpy spy(&manager, &Manager::sendDefaultLanguage);
        for (const char *name : {"en_GB", "zh_CN", "id_ID", "ru_RU", "fr_FR", "de_AT"}) {
            QLocale::setDefault(QLocale(name));
            manager.getLocalLanguage();
        }
        QCOMPARE(spy, QList<QVariantList>({{0}, {1}, {2}, {4}})); // Russian has another number
    }

    void everyCallConnectsAnewAndNoneIsLost()
    {
        server->answer("/mirror", {{}, 200, Server::Silent});
        server->answer("/api/system/operation", {R"({"code":0})", 200, Server::Held});
        setMirrors({"/mirror"});
        Manager manager;
        QSignalSpy spy(&manager, &Manager::sendOperationRecordStatus);
        manager.getDomainNameFromWeb();
        server->take("/mirror");
        for (int i = 0; i < 5; ++i) {
            manager.sendOperationRecord("at once");
        }
        for (int i = 0; i < 5; ++i) {
            server->take("/api/system/operation");
        }
        server->answer(
            "/api/system/operation", {R"({"code":0})", 200, Server::Whole, "Set-Cookie: a=b\r\n"});
        while (server->release("/api/system/operation")) { }
        QTRY_COMPARE(spy.size(), 5);
        for (int i = 0; i < 3; ++i) {
            manager.sendOperationRecord("one by one");
            QVERIFY(spy.wait());
        }
        QCOMPARE(server->connections, 9);
        // That of the silent mirror, and the current one, which got the cookies of the others.
        QTRY_COMPARE(manager.findChildren<QNetworkAccessManager *>().size(), 2);
        const QUrl called(server->baseAddress() + "/api/system/operation");
        const auto managers = manager.findChildren<QNetworkAccessManager *>();
        QCOMPARE(managers.last()->cookieJar()->cookiesForUrl(called).size(), 1);
    }
};

QTEST_GUILESS_MAIN(TestApi)
#include "tst_api.moc"
