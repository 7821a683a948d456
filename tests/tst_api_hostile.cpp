#include "LoopbackServer.h"
#include "Spies.h"
#include "Support.h"
#include "api/KQHttpManager.h"
#include "base/Deployment.h"
#include "settings/DataManager.h"

#include <QTcpSocket>

using Manager = KQHttpManager;
using Server = LoopbackServer;
using Answer = Server::Answer;

namespace {

struct Hostility {
    Answer answer;
    QString heard;
};

constexpr int mebibyte = 1 << 20;

QStringList logLines;

void keepLogLine(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtDebugMsg) {
        logLines.append(message);
    }
}

} // namespace

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
        const Rows<Hostility> row;
        row("refused connection", {{{}, 0}, "getHttpCode(0)"});
        row("cut in mid-body", {{R"({"code":)", 200, Server::Cut}, "getHttpCode(200)"});
        row("server error", {{R"({"code":0})", 500}, "getHttpCode(500)"});
        row("redirect, which is not followed",
            {{{}, 302, Server::Whole, "Location: /elsewhere\r\n"}, ""});
        row("captive portal", {{"<!DOCTYPE html><html><body>Log in</body></html>"}, ""});
        row("wrong types inside",
            {{json("{'code':null,'data':{'default_mode':{},'srv_ports':{'tcp':[]}}}")},
                "initSystemStatus(0)"});
        row("duplicate keys, the last counts",
            {{json("{'code':0,'code':1000,'data':{},'data':1}")}, "initSystemStatus(1000)"});
        row("code beyond integers", {{json("{'code':1e300}")}, "initSystemStatus(0)"});
        row("deeply nested", {{QByteArray(100000, '[') + QByteArray(100000, ']')}, ""});
        row("garbage up to the limit", {{QByteArray(8 * mebibyte, '\xfe')}, ""});
        row("one byte more", {{QByteArray(8 * mebibyte + 1, '\xfe')}, "getHttpCode(200)"});
        row("a body without end",
            {{QByteArray(mebibyte, ' '), 200, Server::Endless}, "getHttpCode(200)"});
        const QByteArray chunk = "100000\r\n" + QByteArray(mebibyte, ' ') + "\r\n";
        row("chunks without end",
            {{chunk, 200, Server::Endless, "Transfer-Encoding: chunked\r\n"}, "getHttpCode(200)"});
    }

    void badRepliesEndInTheirSignalOrInSilence()
    {
        const auto [answer, heard] = Rows<Hostility>::fetch();
        server->answer("/api/system/index", answer);
        if (answer.status == 0) {
            server->close();
        }
        Manager manager;
        const Spies spies = spiesOn(&manager);
        manager.getInitInfo();
        QTRY_VERIFY_WITH_TIMEOUT(manager.findChildren<QNetworkReply *>().isEmpty(), 60000);
        QCOMPARE(written(spies), heard);
        QCOMPARE(server->complaints, QStringList());
        QVERIFY2(server->bytesSent < 64 * mebibyte, QByteArray::number(server->bytesSent));
    }

    void logLinesShowABodyShortAndOnOneLine()
    {
        const QByteArray forged = json("{'code':7,'msg':'" + QString(20000, 'x') + "'}");
        server->answer("/api/system/log", {json("\x1b[31m{\n'code':1}")});
        server->answer("/api/system/operation", {forged});
        Manager manager;
        QSignalSpy done(&manager, &Manager::sendOperationRecordStatus);
        logLines.clear();
        const auto previous = qInstallMessageHandler(keepLogLine);
        manager.sendOperationRecord("a\nforged line\x1b[2J");
        const bool isDone = done.wait();
        qInstallMessageHandler(previous);
        QVERIFY(isDone);
        for (const QString &line : qAsConst(logLines)) {
            QVERIFY2(line.size() < 17 * 1024, qPrintable(line.left(80)));
            QVERIFY2(!line.contains('\n') && !line.contains('\x1b'), qPrintable(line.left(80)));
        }
        const QString left = QString("… (%1 bytes more)").arg(forged.size() - 16 * 1024);
        QCOMPARE(logLines.filter("应答接口:").value(0).right(left.size()), left);
        QVERIFY(logLines.filter("dealOperationRecord error:").value(0).endsWith(left + ")"));
    }

    void slowServersTimeOutTogether()
    {
        const QByteArray linkLog = "/api/server/push_connect_state";
        for (const char *path : {"system/index", "system/operation", "server/push_connect_state"}) {
            server->answer(QByteArray("/api/") + path, silent);
        }
        server->answer("/ip", {"{}", 503});
        Deployment::current().ipLookupAddress = server->baseAddress() + "/ip";
        Manager manager;
        const Spies spies = spiesOn(&manager);
        const QSignalSpy &names = spies.at("sendTimeOutInterface");
        QElapsedTimer time;
        time.start();
        manager.getInitInfo();
        manager.sendOperationRecord({});
        manager.addLineLinkInfo(9, {}, "START");
        manager.addLineLinkInfo(9, "ok", "END");
        QCOMPARE(server->take(linkLog).form.left(12), "POST srvid=9");
        server->answer(linkLog, {R"({"code":0})"});
        QTRY_COMPARE_WITH_TIMEOUT(names.size(), 3, 60000);
        QVERIFY2(time.elapsed() >= 9400, QByteArray::number(time.elapsed()));
        QCOMPARE(server->take(linkLog).form.left(12), "POST srvid=9");
        // Nothing still runs that a late answer could reach.
        QTRY_VERIFY(manager.findChildren<QNetworkReply *>().isEmpty());
        QCOMPARE(spies.at("getHttpCode").size(), 0);
        // Meanwhile the lookup was tried three times, 3 s apart.
        const QVariantList failed{
            false, QString("应答错误" + server->baseAddress() + "/ip"), "应答错误"};
        QTRY_COMPARE(spies.at("sendGetIpIsProxyIp"), QList<QVariantList>({failed}));
        QCOMPARE(manager.getGetMyIPNum(), 3);
    }

    void endlessMirrorIsCutAndAnotherOneWins()
    {
        server->answer("/endless", {QByteArray(256 << 10, 'x'), 200, Server::Endless});
        server->answer("/good", {"AAAA"});
        Deployment::current().mirrorAddresses = QStringList{server->baseAddress() + "/endless"};
        Manager manager;
        QSignalSpy found(&manager, &Manager::domainNameFromWebStatus);
        manager.getDomainNameFromWeb();
        QTRY_VERIFY(manager.findChildren<QNetworkReply *>().isEmpty());
        QCOMPARE(found.size(), 0);
        QVERIFY(server->bytesSent < 32 * mebibyte);
        Deployment::current().mirrorAddresses << server->baseAddress() + "/good";
        manager.getDomainNameFromWeb();
        QVERIFY(found.wait());
    }

    void repliesInReverseOrderReachTheirHandlers()
    {
        const QByteArrayList paths{
            "/api/system/index", "/api/system/region", "/api/system/operation"};
        for (const QByteArray &path : paths) {
            server->answer(path, {R"({"code":0})", 200, Server::Held});
        }
        Manager manager;
        QStringList order;
        connect(&manager, &Manager::initSystemStatus, [&order] { order << "init"; });
        connect(&manager, &Manager::sendIsChinaIp, [&order] { order << "region"; });
        connect(&manager, &Manager::sendOperationRecordStatus, [&order] { order << "record"; });
        manager.getInitInfo();
        manager.checkRegion();
        manager.sendOperationRecord({});
        for (const QByteArray &path : paths) {
            QCOMPARE(server->take(path).method, QByteArray("POST"));
            server->answer(path, {R"({"code":0})"});
        }
        for (int answered = 1; answered <= paths.size(); ++answered) {
            QVERIFY(server->release(paths.at(paths.size() - answered)));
            QTRY_COMPARE(order.size(), answered);
        }
        QCOMPARE(order, QStringList({"record", "region", "init"}));
    }

    void destructionWithRequestsInFlightIsSilent()
    {
        server->answer("/api/system/index", silent);
        server->answer("/ip", silent);
        Deployment::current().ipLookupAddress = server->baseAddress() + "/ip";
        auto manager = std::make_unique<Manager>();
        QSignalSpy codes(manager.get(), &Manager::getHttpCode);
        for (int i = 0; i < 5; ++i) {
            manager->getInitInfo();
        }
        for (int i = 0; i < 5; ++i) {
            QCOMPARE(server->take("/api/system/index").method, "POST");
        }
        manager->addLineLinkInfo(1, {}, "START");
        manager.reset();
        QTRY_VERIFY(server->findChildren<QTcpSocket *>().isEmpty());
        QCOMPARE(codes.size(), 0);
    }
};

QTEST_GUILESS_MAIN(TestApiHostile)
#include "tst_api_hostile.moc"
