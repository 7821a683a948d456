#include "LoopbackServer.h"
#include "Spies.h"
#include "Support.h"
#include "api/KQHttpManager.h"
#include "base/Deployment.h"
#include "settings/DataManager.h"

#include <QTcpSocket>

using M = KQHttpManager;
using Server = LoopbackServer;
using Answer = Server::Answer;
using Hostility = Table<Answer, QString>;

// Servers that are dead, slow or lying: each request ends in its signal or in silence, in time.
class TestApiHostile : public QObject {
    Q_OBJECT

    const Answer silent{{}, 200, Server::Silent};
    std::unique_ptr<Server> server;

private slots:
    void init()
    {
        server = std::make_unique<Server>();
        Deployment::current().ipLookupAddress.clear();
        DataManager::getInstance()->setDomainName(server->baseAddress());
    }

    void badRepliesEndInTheirSignalOrInSilence_data()
    {
        // clang-format off
        const Hostility row; // answer, signals
        row("refused connection", {{}, 0}, "getHttpCode(0)");
        row("cut in mid-body", {R"({"code":)", 200, Server::Cut}, "getHttpCode(200)");
        row("server error", {R"({"code":0})", 500}, "getHttpCode(500)");
        row("redirect, which is not followed", {{}, 302, Server::Whole, 0, "Location: /elsewhere\r\n"}, "");
        row("captive portal", {"<!DOCTYPE html><html><body>Log in</body></html>"}, "");
        row("no body", {}, "");
        row("empty object", {"{}"}, "");
        row("wrong types everywhere", {R"({"code":"1000","msg":{},"data":[{"srv_ports":7}]})"}, "initSystemStatus(0)");
        row("wrong types inside", {R"({"code":null,"data":{"default_mode":{},"srv_ports":{"tcp":[]}}})"}, "initSystemStatus(0)");
        row("duplicate keys, the last counts", {R"({"code":0,"code":1000,"data":{},"data":1})"}, "initSystemStatus(1000)");
        row("code beyond integers", {R"({"code":1e300})"}, "initSystemStatus(0)");
        row("deeply nested", {QByteArray(100000, '[') + QByteArray(100000, ']')}, "");
        row("10 MB of garbage", {QByteArray(10 << 20, '\xfe')}, "");
        // clang-format on
    }

    void badRepliesEndInTheirSignalOrInSilence()
    {
        const auto [answer, expected] = Hostility::fetch();
        server->answer("/api/system/index", answer);
        if (answer.status == 0)
            server->close();
        M manager;
        const Spies spies = spiesOn(&manager);
        manager.getInitInfo();
        QTRY_VERIFY(manager.findChildren<QNetworkReply *>().isEmpty());
        QCOMPARE(written(spies), expected);
        QCOMPARE(server->complaints, QStringList());
    }

    void slowServersTimeOutTogether()
    {
        const QByteArray linkLog = "/api/server/push_connect_state";
        for (const char *path : {"system/index", "system/operation", "server/push_connect_state"})
            server->answer(QByteArray("/api/") + path, silent);
        server->answer("/api/system/region", {QByteArray(1 << 20, ' '), 200, Server::Endless});
        server->answer(
            "/api/system/send_download_link", {R"({"code":0})", 200, Server::Cut, 10800});
        server->answer("/ip", {"{}", 503});
        Deployment::current().ipLookupAddress = server->baseAddress() + "/ip";
        M manager;
        const Spies spies = spiesOn(&manager);
        const QSignalSpy &names = spies.at("sendTimeOutInterface");
        QElapsedTimer time;
        time.start();
        manager.getInitInfo();
        manager.sendOperationRecord({});
        manager.checkRegion();
        manager.getDownloadLink({});
        manager.addLineLinkInfo(9, {}, "START");
        manager.addLineLinkInfo(9, "ok", "END");
        QCOMPARE(server->take(linkLog).form.left(12), "POST srvid=9");
        server->answer(linkLog, {R"({"code":0})"});
        QTRY_COMPARE_WITH_TIMEOUT(names.size(), 5, 12000);
        QVERIFY(time.elapsed() >= 9400 && time.elapsed() < 11000);
        QCOMPARE(server->take(linkLog).form.left(12), "POST srvid=9");
        // Nothing still runs that a late answer could reach.
        QTRY_VERIFY(manager.findChildren<QNetworkReply *>().isEmpty());
        QCOMPARE(spies.at("getHttpCode").size(), 0);
        QVERIFY2(server->bytesSent < (128 << 20), QByteArray::number(server->bytesSent));
        // Meanwhile the lookup was tried three times, 3 s apart.
        const QVariantList failed{
            false, QString("应答错误" + server->baseAddress() + "/ip"), "应答错误"};
        QCOMPARE(spies.at("sendGetIpIsProxyIp"), QList<QVariantList>({failed}));
        QCOMPARE(manager.getGetMyIPNum(), 3);
    }

    void endlessMirrorIsCutAndAnotherOneWins()
    {
        server->answer("/endless", {QByteArray(256 << 10, 'x'), 200, Server::Endless});
        server->answer("/good", {"AAAA", 200, Server::Whole, 100});
        Deployment::current().mirrorAddresses = QStringList{server->baseAddress() + "/endless"};
        M manager;
        QSignalSpy found(&manager, &M::domainNameFromWebStatus);
        manager.getDomainNameFromWeb();
        QTRY_VERIFY(manager.findChildren<QNetworkReply *>().isEmpty());
        QCOMPARE(found.size(), 0);
        QVERIFY(server->bytesSent < (32 << 20));
        Deployment::current().mirrorAddresses << server->baseAddress() + "/good";
        manager.getDomainNameFromWeb();
        QVERIFY(found.wait());
    }

    void repliesInReverseOrderReachTheirHandlers()
    {
        server->answer("/api/system/index", {R"({"code":0})", 200, Server::Whole, 60});
        server->answer("/api/system/region", {R"({"code":1})", 200, Server::Whole, 30});
        server->answer("/api/system/operation", {R"({"code":0})"});
        M manager;
        QStringList order;
        connect(&manager, &M::initSystemStatus, [&order] { order << "init"; });
        connect(&manager, &M::sendIsChinaIp, [&order] { order << "region"; });
        connect(&manager, &M::sendOperationRecordStatus, [&order] { order << "record"; });
        manager.getInitInfo();
        manager.checkRegion();
        manager.sendOperationRecord({});
        QTRY_COMPARE(order, QStringList({"record", "region", "init"}));
    }

    void destructionWithRequestsInFlightIsSilent()
    {
        server->answer("/api/system/index", silent);
        server->answer("/ip", silent);
        Deployment::current().ipLookupAddress = server->baseAddress() + "/ip";
        auto manager = std::make_unique<M>();
        QSignalSpy codes(manager.get(), &M::getHttpCode);
        for (int i = 0; i < 5; ++i)
            manager->getInitInfo();
        for (int i = 0; i < 5; ++i)
            QCOMPARE(server->take("/api/system/index").method, "POST");
        manager->addLineLinkInfo(1, {}, "START");
        manager.reset();
        QTRY_VERIFY(server->findChildren<QTcpSocket *>().isEmpty());
        QCOMPARE(codes.size(), 0);
    }
};

QTEST_GUILESS_MAIN(TestApiHostile)
#include "tst_api_hostile.moc"
