#include <functional>

#include <QJsonDocument>
#include <QLocale>
#include <QNetworkAccessManager>
#include <QSignalSpy>
#include <QtTest>

#include "LoopbackServer.h"
#include "api/Endpoints.h"
#include "api/KQHttpManager.h"
#include "api/RequestSignature.h"
#include "base/Deployment.h"
#include "crypto/Encryption.h"
#include "settings/DataManager.h"

using Operation = std::function<void(KQHttpManager &)>;
using Fields = LoopbackServer::Pairs;
using Arguments = QVariantList;
Q_DECLARE_METATYPE(Operation)
Q_DECLARE_METATYPE(RequestHeaders)

namespace {

QByteArray enciphered(const QString &address)
{
    return QByteArray::fromStdString(Encryption().encode(address.toStdString()));
}

QByteArray lookupReply(const char *ip)
{
    return QByteArray(
        R"({"ip":"%1","cityid":7,"country":"C","area":"A","province":"P","city":"T","isp":"I"})")
        .replace("%1", ip);
}

} // namespace

class TestApi : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<LoopbackServer> server;

    void setMirrors(const QByteArrayList &paths)
    {
        Deployment::current().mirrorAddresses.clear();
        for (const QByteArray &path : paths) {
            Deployment::current().mirrorAddresses.append(server->baseAddress() + path);
        }
    }

private slots:
    void init()
    {
        server = std::make_unique<LoopbackServer>();
        Deployment::current().apiBaseAddress = server->baseAddress();
        Deployment::current().ipLookupAddress.clear();
        setMirrors({});
        DataManager *settings = DataManager::getInstance();
        settings->setDomainName(server->baseAddress());
        settings->setIsTestMode(false);
        settings->setUserInfo(UserInfo());
        settings->setChannel(QString());
        settings->setVpnModel(0);
    }

    void cleanup() { QCOMPARE(server->complaints(), QStringList()); }

    void signatureCoversFilledHeadersSortedByName_data()
    {
        QTest::addColumn<RequestHeaders>("headers");
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("signature");
        QTest::newRow("all, logged in")
            << RequestHeaders{{"_device_os", "linux"}, {"_language", "en"},
                   {"_version_show", "1.0.7"}, {"_os_version", "debian12"}, {"_oem", "default"},
                   {"_prj_name", "vornvpn"}, {"_salt", "00:11:22:33:44:55"},
                   {"_sn", "00:11:22:33:44:55"}, {"_session", "s3ss"}, {"_uid", "42"},
                   {"_username", "radius"}, {"_timestamp", "1700000000"}, {"_version", "7"},
                   {"_brand", "vornvpn"}, {"_channel", "official"}}
            << QByteArray(
                   "_brand=vornvpn&_channel=official&_device_os=linux&_language=en&_oem=default"
                   "&_os_version=debian12&_prj_name=vornvpn&_salt=00:11:22:33:44:55&_session=s3ss"
                   "&_sn=00:11:22:33:44:55&_timestamp=1700000000&_uid=42&_username=radius"
                   "&_version=7&_version_show=1.0.7Q#pd]3Ha>wz-8&Mv")
            << QByteArray("e61be68c9ebee35e3324934474db2d7c");
        QTest::newRow("empty name, empty value, beyond ASCII")
            << RequestHeaders{{"_channel", "官方"}, {"_session", ""}, {"", "x"},
                   {"_brand", "vornvpn"}}
            << QByteArray("_brand=vornvpn&_channel=官方Q#pd]3Ha>wz-8&Mv")
            << QByteArray("9406cf5aa46b2329b4bdbde670d8ee43");
        QTest::newRow("nothing but the salt") << RequestHeaders() << QByteArray("Q#pd]3Ha>wz-8&Mv")
                                              << QByteArray("7d79e2754949646574bd10fb8dc1c0d7");
    }

    void signatureCoversFilledHeadersSortedByName()
    {
        QFETCH(RequestHeaders, headers);
        QTEST(signatureText(headers), "text");
        QTEST(signatureOf(signatureText(headers)), "signature");
    }

    void requestsTellSessionAndChannel()
    {
        server->answer("/api/system/region", {"{}"});
        KQHttpManager manager;
        manager.checkRegion();
        const auto before = server->take("/api/system/region");
        UserInfo user;
        user.setSession(QStringLiteral("s3ss"));
        user.setUid(42);
        DataManager::getInstance()->setUserInfo(user);
        DataManager::getInstance()->setChannel(QStringLiteral("shop"));
        manager.checkRegion();
        const auto after = server->take("/api/system/region");
        const auto told = [](const LoopbackServer::Request &request) {
            return QByteArrayList{request.header("_channel"), request.header("_session"),
                request.header("_uid"), request.header("_brand"), request.header("_device_os")};
        };
        QCOMPARE(told(before), QByteArrayList({"official", "", "", "vornvpn", "linux"}));
        QCOMPARE(told(after), QByteArrayList({"shop", "s3ss", "42", "vornvpn", "linux"}));
        QCOMPARE(after.header("_salt"), after.header("_sn"));
    }

    void operationsPostTheirForm_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<Fields>("fields");
        const auto row = [](const char *name, const char *path, const Operation &operation,
                             const Fields &fields) {
            QTest::newRow(name) << operation << QByteArray(path) << fields;
        };
        const char *log = "/api/system/log";
        row("region", "/api/system/region", [](auto &m) { m.checkRegion(); }, {});
        row("init, never a first installation here", "/api/system/index",
            [](auto &m) { m.getInitInfo(); }, {{"is_first_install", "1"}});
        row("log p2p", log, [](auto &m) { m.pushLog("p2p", "t", "s", "i"); },
            {{"flag", "p2p"}, {"status", "s"}, {"info", "i"}});
        row("log language, as installed on Linux", log,
            [](auto &m) { m.pushLog("language", "", "1", "en"); },
            {{"flag", "language"}, {"type", ""}, {"language", "en"}});
        row("log sarko2", log, [](auto &m) { m.pushLog("sarko2", "t", "s", "i"); },
            {{"flag", "sarko2"}, {"status", "s"}});
        row("log delay", log, [](auto &m) { m.pushLog("delay", "t", "s", "延迟"); },
            {{"flag", "delay"}, {"data", "延迟"}});
        row("log of an unknown kind", log, [](auto &m) { m.pushLog("P2P", "t", "s", "i"); },
            {{"flag", "P2P"}});
        row("operation record", "/api/system/operation",
            [](auto &m) { m.sendOperationRecord("5"); }, {{"type", "5"}});
        row("link log", "/api/server/push_connect_state",
            [](auto &m) { m.sendPushLinkLog(-3, "ok", 1700000000, 1700000009, "KCP"); },
            {{"srvid", "-3"}, {"status", "ok"}, {"start_time", "1700000000"},
                {"end_time", "1700000009"}, {"protocol", "KCP"}});
        row("own address, none known", "/api/server/push_myip",
            [](auto &m) { m.pushMyIpToServer(); },
            {{"cityid", "0"}, {"ip", ""}, {"country", ""}, {"area", ""}, {"province", ""},
                {"city", ""}, {"isp", ""}});
        row("search words", "/api/server/push_search_word",
            [](auto &m) {
                for (const char *word : {"to", "tok", "osaka", "tokyo", "toky"}) {
                    m.appendSearchWordList(word);
                }
                m.pushSearchLineWord();
            },
            {{"word", "osaka,tokyo"}});
        row("language", "/api/system/push_language", [](auto &m) { m.pushLanguage(3, "ru"); },
            {{"type", "3"}, {"language", "ru"}});
        row("download link", "/api/system/send_download_link",
            [](auto &m) { m.getDownloadLink("a@b.example"); }, {{"email", "a@b.example"}});
    }

    void operationsPostTheirForm()
    {
        QFETCH(Operation, operation);
        QFETCH(QByteArray, path);
        server->answer(path, {"{}"});
        KQHttpManager manager;
        operation(manager);
        const auto request = server->take(path);
        QCOMPARE(request.method, QByteArray("POST"));
        QTEST(request.fields, "fields");
    }

    void repliesReachTheirSignal_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<QByteArray>("signal");
        QTest::addColumn<Arguments>("arguments");
        const auto row = [](const char *name, const char *path, const Operation &operation,
                             const char *reply, const char *signal, const Arguments &arguments) {
            QTest::newRow(name) << operation << QByteArray(path) << QByteArray(reply)
                                << QByteArray(signal) << arguments;
        };
        const Operation region = [](auto &m) { m.checkRegion(); };
        const Operation init = [](auto &m) { m.getInitInfo(); };
        const Operation record = [](auto &m) { m.sendOperationRecord("1"); };
        const char *regionPath = "/api/system/region";
        const char *china = SIGNAL(sendIsChinaIp(bool));
        row("region refused", regionPath, region, R"({"code":200,"data":{"ip":"1.0.1.1"}})", china,
            {false});
        row("region inside a block", regionPath, region, R"({"code":0,"data":{"ip":"1.0.1.1"}})",
            china, {true});
        row("region outside", regionPath, region, R"({"data":{"wl":0,"ip":"8.8.8.8"}})", china,
            {false});
        row("region allowed", regionPath, region, R"({"code":0,"data":{"wl":1,"ip":"1.0.1.1"}})",
            china, {false});
        row("init", "/api/system/index", init, R"({"code":0})", SIGNAL(initSystemStatus(int)), {0});
        row("init refused", "/api/system/index", init, R"({"code":1000})",
            SIGNAL(initSystemStatus(int)), {1000});
        row("operation recorded", "/api/system/operation", record, R"({"code":0,"msg":"好"})",
            SIGNAL(sendOperationRecordStatus(bool, QString)), {true, "好"});
        row("operation refused", "/api/system/operation", record, R"({"code":-1,"msg":"no"})",
            SIGNAL(sendOperationRecordStatus(bool, QString)), {false, "no"});
        row("download link refused", "/api/system/send_download_link",
            [](auto &m) { m.getDownloadLink("x"); }, R"({"code":1})",
            SIGNAL(sendDownloadLinkStatus(bool)), {false});
    }

    void repliesReachTheirSignal()
    {
        QFETCH(Operation, operation);
        QFETCH(QByteArray, path);
        QFETCH(QByteArray, reply);
        QFETCH(QByteArray, signal);
        server->answer(path, {reply});
        KQHttpManager manager;
        QSignalSpy spy(&manager, signal.constData());
        operation(manager);
        QVERIFY(spy.wait());
        QTEST(spy.first(), "arguments");
        server->take(path);
    }

    void timeOutsAreNamed_data()
    {
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<QString>("name");
        const char *const rows[][2] = {{"account/login", "login"}, {"account/third_login", "login"},
            {"account/visitor_login", "login"}, {"system/updateInfo", "checkUpate"},
            {"system/index", "init"}, {"account/getemailcode", "emailCode"},
            {"account/register", "register"}, {"account/register_active", "registerAactive"},
            {"account/forget", "findPasswd"}, {"server/get_all_v2", "allLineInfo"},
            {"system/feedback", "feedback"}, {"account/get_info", "userInfo"},
            {"system/operation", "operationRecord"},
            {"server/push_connect_state", "serverPushLinkLog"},
            {"system/questions", "lineFeedBackQuestion"}, {"system/hot_update", "hotUpdate"},
            {"system/region", "checkRegion"}, {"system/send_download_link", "downloadLink"},
            {"server/push_myip", ""}, {"server/push_search_word", ""}, {"system/push_language", ""},
            {"system/log", ""}, {"system/log/", ""}};
        for (const auto &[path, name] : rows) {
            QTest::newRow(path) << QByteArray(path) << QString::fromLatin1(name);
        }
    }

    void timeOutsAreNamed()
    {
        QFETCH(QByteArray, path);
        KQHttpManager manager;
        QSignalSpy spy(&manager, &KQHttpManager::sendTimeOutInterface);
        manager.dealReplyTimeOut(server->baseAddress() + "/api/" + path);
        QTEST(spy.value(0).value(0).toString(), "name");
        QCOMPARE(server->pending(), 0);
    }

    void firstMirrorThatAnswersWins()
    {
        server->answer("/failed", {{}, 500});
        server->answer(
            "/first", {enciphered(server->baseAddress()), 200, LoopbackServer::Whole, 20});
        server->answer(
            "/late", {enciphered("http://late.example"), 200, LoopbackServer::Whole, 60});
        setMirrors({"/failed", "/first", "/late"});
        DataManager::getInstance()->setDomainName("http://stale.example");
        KQHttpManager manager;
        QSignalSpy spy(&manager, &KQHttpManager::domainNameFromWebStatus);
        manager.getDomainNameFromWeb();
        manager.getDomainNameFromWeb(); // starts anew; the replies of before say nothing
        QVERIFY(spy.wait());
        auto *late = manager.findChild<QNetworkReply *>();
        QVERIFY(QSignalSpy(late, &QObject::destroyed).wait()); // losers are released too
        QCOMPARE(spy, QList<Arguments>({{true}}));
        QCOMPARE(DataManager::getInstance()->getDomainName(), server->baseAddress());
        server->answer("/api/system/region", {"{}"});
        manager.checkRegion();
        QCOMPARE(server->take("/api/system/region").method, QByteArray("POST"));
    }

    void undecipherableMirrorEmptiesTheAddress_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("too short") << QByteArray("AAAA");
        QTest::newRow("out of range") << QByteArray("QUFBQUFBQUFBQUFBQUFBQUFB");
    }

    void undecipherableMirrorEmptiesTheAddress()
    {
        QFETCH(QByteArray, text);
        server->answer("/mirror", {text});
        setMirrors({"/mirror"});
        KQHttpManager manager;
        QSignalSpy found(&manager, &KQHttpManager::domainNameFromWebStatus);
        manager.getDomainNameFromWeb();
        QVERIFY(found.wait());
        QCOMPARE(DataManager::getInstance()->getDomainName(), QString());
        QSignalSpy failed(&manager, &KQHttpManager::getHttpCode);
        manager.checkRegion();
        QVERIFY(failed.wait());
        QCOMPARE(failed.first(), Arguments{0});
    }

    void testModeAsksNoMirror()
    {
        DataManager::getInstance()->setIsTestMode(true);
        setMirrors({"/mirror"});
        KQHttpManager manager;
        manager.setTestDomainName("http://test.example");
        QSignalSpy spy(&manager, &KQHttpManager::domainNameFromWebStatus);
        manager.getDomainNameFromWeb();
        QCOMPARE(spy, QList<Arguments>({{true}}));
        QCOMPARE(DataManager::getInstance()->getDomainName(), QString("http://test.example"));
        QVERIFY(manager.findChildren<QNetworkReply *>().isEmpty());
    }

    void lookupsTellOwnAndExitAddress()
    {
        // The lookup's address is the beginning of a mirror's.
        Deployment::current().ipLookupAddress = server->baseAddress() + "/ip";
        server->answer("/ip", {lookupReply("1.1.1.1")});
        server->answer("/ip/cookie.txt", {enciphered(server->baseAddress())});
        setMirrors({"/ip/cookie.txt"});
        KQHttpManager manager;
        QSignalSpy checked(&manager, &KQHttpManager::sendGetIpIsProxyIp);
        QSignalSpy found(&manager, &KQHttpManager::domainNameFromWebStatus);
        QVERIFY(QSignalSpy(manager.findChild<QNetworkReply *>(), &QObject::destroyed).wait());
        manager.getDomainNameFromWeb();
        QVERIFY(found.wait());
        manager.setGetMyIPNum(3); // no retry is left
        manager.requestWebAddress();
        QVERIFY(checked.wait());
        server->answer("/ip", {lookupReply("2.2.2.2")});
        manager.requestWebAddress();
        QVERIFY(checked.wait());
        QCOMPARE(checked,
            QList<Arguments>({{false, QString(lookupReply("1.1.1.1")), "1.1.1.1"},
                {true, QString(lookupReply("2.2.2.2")), "2.2.2.2"}}));
        server->answer("/api/server/push_myip", {"{}"});
        manager.pushMyIpToServer();
        QCOMPARE(server->take("/api/server/push_myip").fields,
            Fields({{"cityid", "7"}, {"ip", "2.2.2.2"}, {"country", "C"}, {"area", "A"},
                {"province", "P"}, {"city", "T"}, {"isp", "I"}}));
    }

    void lookupsAreRetriedThreeTimes()
    {
        IpCheck check;
        using Verdict = IpCheck::Verdict;
        QCOMPARE(check.failed(), Verdict::Retry);
        QCOMPARE(check.failed(), Verdict::Retry);
        QCOMPARE(check.failed(), Verdict::GiveUp);
        QCOMPARE(check.failed(), Verdict::GiveUp);
        check.setRetries(0);
        const QJsonObject own{{"ip", "1.1.1.1"}, {"city", "T"}};
        const Verdict verdicts[] = {Verdict::OwnAddress, Verdict::Retry, Verdict::Retry,
            Verdict::Retry, Verdict::NotProxied};
        for (const Verdict verdict : verdicts) {
            QCOMPARE(check.exitAddress().city, QString()); // nothing is kept before the last one
            QCOMPARE(check.answered(own), verdict);
        }
        QCOMPARE(check.exitAddress().city, QString("T"));
        QCOMPARE(check.answered({{"ip", "2.2.2.2"}}), Verdict::Proxied);
    }

    void linkLogKeepsOneUploadInFlight()
    {
        QList<qint64> times{-1, 100, 200, 300, 400, 500, 600};
        LinkLog log([&times] { return times.takeFirst(); });
        QVERIFY(!log.add(5, "ok", "END", 1) && log.size() == 0);
        QCOMPARE(log.current().srvid, 5);
        QVERIFY(!log.add(6, "ignored", "START", 4));
        const auto due = log.add(6, "ok", "END", 1);
        QVERIFY(due && due->srvid == 6 && due->status == "ok" && due->protocol == "KCP");
        QCOMPARE(due->start_time, 100); // a negative clock is read again
        QCOMPARE(due->end_time, 200);
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

    void linkLogIsDrainedInOrderAndRetriedAfterTimeOut()
    {
        const QByteArray path = "/api/server/push_connect_state";
        server->answer(path, {R"({"code":0,"msg":"m"})", 200, LoopbackServer::Whole, 30});
        KQHttpManager manager;
        QSignalSpy accepted(&manager, &KQHttpManager::sendPushLinkLogStatus);
        for (int line = 1; line <= 2; ++line) {
            manager.addLineLinkInfo(line, {}, "START");
            manager.addLineLinkInfo(line, "ok", "END");
        }
        QCOMPARE(server->take(path).fields.value(0).second, QByteArray("1"));
        QCOMPARE(server->take(path).fields.value(0).second, QByteArray("2"));
        manager.dealReplyTimeOut(server->baseAddress() + path); // the head, once more
        QCOMPARE(server->take(path).fields.value(0).second, QByteArray("2"));
        QTRY_COMPARE(accepted.size(), 3);
        QCOMPARE(accepted.last(), Arguments({true, "m"}));
        QCOMPARE(server->pending(), 0);
    }

    void initRecordFillsTheSettings_data()
    {
        QTest::addColumn<int>("storedMode");
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<int>("mode");
        QTest::addColumn<QStringList>("texts");
        QTest::newRow("all keys") << 0
                                  << QByteArray(
                                         R"({"default_mode":"sarko2-wss","private_agreement":"p",
            "email_verification_switch":"1","p2p_switch":"0","support_protocols":"a,b",
            "srv_ports":{"upd":"9","tcp":""},"app_store_download_url":"s"})")
                                  << 2 << QStringList{"p", "1", "0", "a,b", "9", "", "s"};
        QTest::newRow("a mode that Linux lacks; JSON types differ")
            << 0
            << QByteArray(
                   R"({"default_mode":"openvpn","private_agreement":1,"email_verification_switch":1,
            "p2p_switch":"x","support_protocols":["a"],"srv_ports":[],"app_store_download_url":null})")
            << 1 << QStringList{"", "0", "0", "", "old", "old", ""};
        QTest::newRow("a mode chosen before; nothing sent")
            << 5 << QByteArray("{}") << 5 << QStringList{"", "0", "0", "", "old", "old", "old"};
        QTest::newRow("an unknown mode") << 0 << QByteArray(R"({"default_mode":"Kcp"})") << 0
                                         << QStringList{"", "0", "0", "", "old", "old", "old"};
    }

    void initRecordFillsTheSettings()
    {
        QFETCH(int, storedMode);
        QFETCH(QByteArray, data);
        DataManager &settings = *DataManager::getInstance();
        settings.setVpnModel(storedMode);
        settings.setUdpVpnPort("old");
        settings.setTcpVpnPort("old");
        settings.setAppStoreDownloadUrl("old");
        KQHttpManager manager;
        QJsonObject reply{{"data", QJsonDocument::fromJson(data).object()}};
        manager.dealInitInfo(reply);
        QTEST(settings.getVpnModel(), "mode");
        const QStringList texts{settings.getPrivacyPolicyUrl(),
            QString::number(settings.getEmailVerificationSwitch()),
            QString::number(settings.getP2pSwitch()), settings.getSupportProtocols(),
            settings.getUdpVpnPort(), settings.getTcpVpnPort(), settings.getAppStoreDownloadUrl()};
        QTEST(texts, "texts");
    }

    void systemLanguageIsMapped_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QList<Arguments>>("emitted");
        QTest::newRow("English") << QLocale("en_GB") << QList<Arguments>{{0}};
        QTest::newRow("Chinese") << QLocale("zh_CN") << QList<Arguments>{{1}};
        QTest::newRow("Indonesian") << QLocale("id_ID") << QList<Arguments>{{2}};
        QTest::newRow("German") << QLocale("de_AT") << QList<Arguments>{{4}};
        QTest::newRow("Russian is known by another number")
            << QLocale("ru_RU") << QList<Arguments>();
    }

    void systemLanguageIsMapped()
    {
        QFETCH(QLocale, locale);
        KQHttpManager manager;
        QSignalSpy spy(&manager, &KQHttpManager::sendDefaultLanguage);
        const QLocale before;
        QLocale::setDefault(locale);
        manager.getLocalLanguage();
        QLocale::setDefault(before);
        QTEST(static_cast<QList<Arguments> &>(spy), "emitted");
    }

    void everyCallConnectsAnewAndNoneIsLost()
    {
        server->answer("/mirror", {enciphered("x"), 200, LoopbackServer::Silent});
        server->answer("/api/system/operation", {R"({"code":0})", 200, LoopbackServer::Whole, 50});
        setMirrors({"/mirror"});
        KQHttpManager manager;
        QSignalSpy spy(&manager, &KQHttpManager::sendOperationRecordStatus);
        manager.getDomainNameFromWeb();
        server->take("/mirror");
        for (int i = 0; i < 5; ++i) {
            manager.sendOperationRecord(QString::number(i));
        }
        QTRY_COMPARE(spy.size(), 5);
        for (int i = 0; i < 3; ++i) {
            manager.sendOperationRecord(QString::number(i));
            QVERIFY(spy.wait());
        }
        QCOMPARE(server->connections(), 9);
        // The manager of the silent mirror, and one more.
        QTRY_COMPARE(manager.findChildren<QNetworkAccessManager *>().size(), 2);
    }
};

QTEST_GUILESS_MAIN(TestApi)
#include "tst_api.moc"
