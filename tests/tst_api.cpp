#include "LoopbackServer.h"
#include "Spies.h"
#include "Support.h"
#include "api/KQHttpManager.h"
#include "api/RequestSignature.h"
#include "base/Deployment.h"
#include "crypto/Encryption.h"
#include "settings/DataManager.h"

#include <QNetworkAccessManager>

using M = KQHttpManager;
using Server = LoopbackServer;
using Operation = std::function<void(M &)>;
using Arguments = QVariantList;
using Signed = Table<RequestHeaders, QByteArray, QByteArray>; // headers, text, signature
using Posted = Table<QByteArray, Operation, QByteArray, QString>; // path, operation, reply, signals

static QByteArray enciphered(const QString &address)
{
    return QByteArray::fromStdString(Encryption().encode(address.toStdString()));
}

class TestApi : public QObject {
    Q_OBJECT

    std::unique_ptr<Server> server;
    DataManager &settings = *DataManager::getInstance();

    void setMirrors(QStringList paths)
    {
        paths.replaceInStrings(QRegularExpression("^/"), server->baseAddress() + "/");
        Deployment::current().mirrorAddresses = paths;
    }

private slots:
    void init()
    {
        server = std::make_unique<Server>();
        Deployment::current().apiBaseAddress = server->baseAddress();
        Deployment::current().ipLookupAddress.clear();
        settings.setDomainName(server->baseAddress());
        settings.setIsTestMode(false);
    }

    void cleanup() { QCOMPARE(server->complaints, QStringList()); }

    void signatureCoversFilledHeadersSortedByName_data()
    {
        // clang-format off
        const Signed row;
        row("logged in", {{"_uid", "42"}, {"_version_show", "1.0.7"}, {"_version", "7"}, {"_brand", "vornvpn"}, {"_channel", "official"}},
            "_brand=vornvpn&_channel=official&_uid=42&_version=7&_version_show=1.0.7Q#pd]3Ha>wz-8&Mv", "fc99c7c519b2a67a0c680eca3009e881");
        row("empty name, empty value, beyond ASCII", {{"_channel", "官方"}, {"_session", ""}, {"", "x"}, {"_brand", "vornvpn"}},
            "_brand=vornvpn&_channel=官方Q#pd]3Ha>wz-8&Mv", "9406cf5aa46b2329b4bdbde670d8ee43");
        row("nothing but the salt", {}, "Q#pd]3Ha>wz-8&Mv", "7d79e2754949646574bd10fb8dc1c0d7");
        // clang-format on
    }

    void signatureCoversFilledHeadersSortedByName()
    {
        const auto [headers, text, signature] = Signed::fetch();
        QCOMPARE(signatureText(headers), text);
        QCOMPARE(signatureOf(text), signature);
    }

    void requestsTellSessionAndChannel()
    {
        server->answer("/api/system/region", {"{}"});
        M manager;
        UserInfo user;
        for (const char *expected :
            {"official|||default|identity", "shop|s3ss|42|default|identity"}) {
            manager.checkRegion();
            auto headers = server->take("/api/system/region").headers;
            QCOMPARE(headers["_channel"] + '|' + headers["_session"] + '|' + headers["_uid"] + '|'
                    + headers["_oem"] + '|' + headers["Accept-Encoding"],
                expected);
            user.setSession("s3ss");
            user.setUid(42);
            settings.setUserInfo(user);
            settings.setChannel("shop");
        }
    }

    void operationsPostTheirFormAndReport_data()
    {
        // clang-format off
        const Posted table;
        const auto row = [&table](const char *path, const Operation &operation, const char *form, const char *reply = "{}",
            const char *heard = "") { table(form, "/api/" + QByteArray(path), operation, reply, heard); };
        const Operation region = [](M &m) { m.checkRegion(); };
        const Operation record = [](M &m) { m.sendOperationRecord("5"); };
        row("system/region", region, "POST", R"({"code":200,"data":{"ip":"1.0.1.1"}})", "sendIsChinaIp(false)");
        row("system/region", region, "POST", R"({"code":0,"data":{"ip":"1.0.1.1"}})", "sendIsChinaIp(true)");
        row("system/region", region, "POST", R"({"data":{"wl":0,"ip":"8.8.8.8"}})", "sendIsChinaIp(false)");
        row("system/region", region, "POST", R"({"code":0,"data":{"wl":1,"ip":"1.0.1.1"}})", "sendIsChinaIp(false)");
        row("system/operation", record, "POST type=5", R"({"code":0,"msg":"好"})", "sendOperationRecordStatus(true,好)");
        row("system/operation", record, "POST type=5", R"({"code":-1,"msg":"no"})", "sendOperationRecordStatus(false,no)");
        row("system/index", [](M &m) { m.getInitInfo(); }, "POST is_first_install=1", R"({"code":1000})", "initSystemStatus(1000)");
        row("system/send_download_link", [](M &m) { m.getDownloadLink("a@b.c"); }, "POST email=a@b.c", R"({"code":2})", "sendDownloadLinkStatus(false)");
        row("system/log", [](M &m) { m.pushLog("p2p", "t", "s", "i"); }, "POST flag=p2p status=s info=i");
        row("system/log", [](M &m) { m.pushLog("language", "", "1", "en"); }, "POST flag=language type= language=en");
        row("system/log", [](M &m) { m.pushLog("sarko2", "t", "s", "i"); }, "POST flag=sarko2 status=s");
        row("system/log", [](M &m) { m.pushLog("delay", "t", "s", "延"); }, "POST flag=delay data=延");
        row("system/log", [](M &m) { m.pushLog("P2P", "t", "s", "i"); }, "POST flag=P2P");
        row("system/push_language", [](M &m) { m.pushLanguage(3, "ru"); }, "POST type=3 language=ru");
        row("server/push_connect_state", [](M &m) { m.sendPushLinkLog(-3, "ok", 17, 19, "KCP"); }, "POST srvid=-3 status=ok start_time=17 end_time=19 protocol=KCP");
        const Operation words = [](M &m) { for (auto word : {"to", "tok", "osaka", "tokyo", "toky"}) m.appendSearchWordList(word); m.pushSearchLineWord(); };
        row("server/push_search_word", words, "POST word=osaka,tokyo");
        // clang-format on
    }

    void operationsPostTheirFormAndReport()
    {
        const auto [path, operation, reply, heard] = Posted::fetch();
        server->answer(path, {reply});
        M manager;
        const Spies spies = spiesOn(&manager);
        operation(manager);
        QCOMPARE(server->take(path).form, QTest::currentDataTag());
        QTRY_COMPARE(written(spies), heard);
    }

    void timeOutsAreNamed()
    {
        // clang-format off
        const QString paths = "account/login account/third_login account/visitor_login system/updateInfo system/index "
            "account/getemailcode account/register account/register_active account/forget server/get_all_v2 "
            "system/feedback account/get_info system/operation server/push_connect_state system/questions "
            "system/hot_update system/region system/send_download_link server/push_myip server/push_search_word "
            "system/push_language system/log system/region/";
        const QString names = "login login login checkUpate init emailCode register registerAactive findPasswd allLineInfo "
            "feedback userInfo operationRecord serverPushLinkLog lineFeedBackQuestion hotUpdate checkRegion downloadLink";
        // clang-format on
        M manager;
        QStringList told;
        connect(&manager, &M::sendTimeOutInterface, [&told](const QString &name) { told << name; });
        for (const QString &path : paths.split(' '))
            manager.dealReplyTimeOut(server->baseAddress() + "/api/" + path);
        QCOMPARE(told.join(' '), names);
        QVERIFY(manager.findChildren<QNetworkReply *>().isEmpty()); // no record, no retry
    }

    void firstMirrorThatAnswersWins()
    {
        server->answer("/failed", {{}, 500});
        server->answer("/first", {enciphered(server->baseAddress()), 200, Server::Whole, 20});
        server->answer("/late", {enciphered("http://late"), 200, Server::Whole, 60});
        setMirrors({"/failed", "", "/first", "/late"});
        settings.setDomainName("http://stale");
        M manager;
        QSignalSpy spy(&manager, &M::domainNameFromWebStatus);
        manager.getDomainNameFromWeb();
        manager.getDomainNameFromWeb(); // starts anew; the replies of before say nothing
        QVERIFY(spy.wait());
        QTRY_VERIFY(manager.findChildren<QNetworkReply *>().isEmpty()); // the loser came and went
        QCOMPARE(spy, QList<Arguments>({{true}}));
        QCOMPARE(settings.getDomainName(), server->baseAddress());
        server->answer("/api/system/region", {"{}"});
        manager.checkRegion();
        QCOMPARE(server->take("/api/system/region").method, "POST");
    }

    void undecipherableMirrorEmptiesTheAddress()
    {
        M manager;
        QSignalSpy found(&manager, &M::domainNameFromWebStatus);
        QSignalSpy failed(&manager, &M::getHttpCode);
        setMirrors({"/mirror"});
        for (const char *text : {"AAAA", "QUFBQUFBQUFBQUFBQUFBQUFB"}) { // too short; out of range
            settings.setDomainName("http://stale");
            server->answer("/mirror", {text});
            manager.getDomainNameFromWeb();
            QVERIFY(found.wait());
            QCOMPARE(settings.getDomainName(), QString());
            manager.checkRegion();
            QVERIFY(failed.wait());
            QCOMPARE(failed.takeFirst(), Arguments{0});
        }
    }

    void testModeAsksNoMirror()
    {
        settings.setIsTestMode(true);
        setMirrors({"/mirror"}); // its request would be a complaint
        M manager;
        manager.setTestDomainName("http://test");
        QSignalSpy spy(&manager, &M::domainNameFromWebStatus);
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
        M manager;
        QSignalSpy checked(&manager, &M::sendGetIpIsProxyIp);
        QSignalSpy found(&manager, &M::domainNameFromWebStatus);
        QTRY_VERIFY(manager.findChildren<QNetworkReply *>().isEmpty());
        manager.getDomainNameFromWeb();
        QVERIFY(found.wait());
        manager.setGetMyIPNum(3); // no retry is left
        manager.requestWebAddress();
        QVERIFY(checked.wait());
        server->answer("/ip", {exit.toUtf8()});
        manager.requestWebAddress();
        QVERIFY(checked.wait());
        QCOMPARE(checked, QList<Arguments>({{false, own, "1.1.1.1"}, {true, exit, "2.2.2.2"}}));
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
    }

    void linkLogKeepsOneUploadInFlight()
    {
        QList<qint64> times{-1, 100, 200, 300, 400, 500, 600};
        LinkLog log([&times] { return times.takeFirst(); });
        QVERIFY(!log.add(5, "ok", "END", 1) && log.size() == 0 && log.current().srvid == 5);
        QVERIFY(!log.add(6, "ignored", "START", 4));
        const auto due = log.add(6, "ok", "END", 1);
        QVERIFY(due && due->srvid == 6 && due->status == "ok" && due->protocol == "KCP");
        QVERIFY(due->start_time == 100 && due->end_time == 200); // a negative clock is read again
        log.uploadStarted();
        log.add(7, "", "START", 8);
        QVERIFY(!log.add(7, "late", "END", 8));
        log.uploadRefused();
        log.add(8, "", "START", 1);
        QVERIFY(!log.add(8, "later", "END", 1) && log.size() == 3);
        QCOMPARE(log.uploadAccepted()->protocol, QString("NotRecognized"));
        QCOMPARE(log.uploadAccepted()->srvid, 8);
        QVERIFY(!log.uploadAccepted() && !log.isUploading());
        QVERIFY(!log.uploadAccepted() && !log.head());
    }

    void linkLogIsDrainedInOrder()
    {
        const QByteArray path = "/api/server/push_connect_state";
        server->answer(path, {R"({"code":0,"msg":"m"})", 200, Server::Whole, 30});
        M manager;
        QSignalSpy accepted(&manager, &M::sendPushLinkLogStatus);
        for (int line = 1; line <= 3; ++line) {
            manager.addLineLinkInfo(line, {}, "START");
            manager.addLineLinkInfo(line, "ok", "END");
        }
        for (const char *form : {"POST srvid=1", "POST srvid=2", "POST srvid=3"})
            QCOMPARE(server->take(path).form.left(12), form);
        QTRY_COMPARE(accepted.size(), 3);
        QCOMPARE(server->requests.size(), 0);
    }

    void initRecordFillsTheSettings_data()
    {
        // clang-format off
        const Table<int, QByteArray, QString> row; // mode before, data, settings afterwards
        row("all keys", 0, R"({"default_mode":"sarko2-wss","private_agreement":"p","p2p_switch":"3","email_verification_switch":"1",
            "support_protocols":"a,b","srv_ports":{"upd":"9","tcp":""},"app_store_download_url":"s"})", "2|p|1|3|a,b|9||s");
        row("a mode that Linux lacks, other JSON types", 0, R"({"default_mode":"openvpn","srv_ports":[],"private_agreement":1,
            "email_verification_switch":1,"p2p_switch":"x","support_protocols":["a"],"app_store_download_url":null})", "1||0|0||old|old|");
        row("a mode chosen before", 5, "{}", "5||0|0||old|old|old");
        row("an unknown mode", 0, R"({"default_mode":"Kcp"})", "0||0|0||old|old|old");
        // clang-format on
    }

    void initRecordFillsTheSettings()
    {
        const auto [storedMode, data, expected] = Table<int, QByteArray, QString>::fetch();
        settings.setVpnModel(storedMode);
        settings.setUdpVpnPort("old");
        settings.setTcpVpnPort("old");
        settings.setAppStoreDownloadUrl("old");
        M manager;
        QJsonObject reply{{"data", QJsonDocument::fromJson(data).object()}};
        manager.dealInitInfo(reply);
        const QVariantList stored{settings.getVpnModel(), settings.getPrivacyPolicyUrl(),
            settings.getEmailVerificationSwitch(), settings.getP2pSwitch(),
            settings.getSupportProtocols(), settings.getUdpVpnPort(), settings.getTcpVpnPort(),
            settings.getAppStoreDownloadUrl()};
        QCOMPARE(QVariant(stored).toStringList().join('|'), expected);
    }

    void systemLanguageIsMapped()
    {
        M manager;
        QSignalSpy spy(&manager, &M::sendDefaultLanguage);
        for (const char *name : {"en_GB", "zh_CN", "id_ID", "ru_RU", "fr_FR", "de_AT"}) {
            QLocale::setDefault(QLocale(name));
            manager.getLocalLanguage();
        }
        QCOMPARE(spy, QList<Arguments>({{0}, {1}, {2}, {4}})); // Russian has another number
    }

    void everyCallConnectsAnewAndNoneIsLost()
    {
        server->answer("/mirror", {{}, 200, Server::Silent});
        server->answer("/api/system/operation", {R"({"code":0})", 200, Server::Whole, 50});
        setMirrors({"/mirror"});
        M manager;
        QSignalSpy spy(&manager, &M::sendOperationRecordStatus);
        manager.getDomainNameFromWeb();
        server->take("/mirror");
        for (int i = 0; i < 5; ++i)
            manager.sendOperationRecord("at once");
        QTRY_COMPARE(spy.size(), 5);
        for (int i = 0; i < 3; ++i) {
            manager.sendOperationRecord("one by one");
            QVERIFY(spy.wait());
        }
        QCOMPARE(server->connections, 9);
        // That of the silent mirror, and the current one.
        QTRY_COMPARE(manager.findChildren<QNetworkAccessManager *>().size(), 2);
    }
};

QTEST_GUILESS_MAIN(TestApi)
#include "tst_api.moc"
