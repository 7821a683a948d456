#include "LoopbackServer.h"
#include "Support.h"
#include "api/KQHttpManager.h"
#include "base/Deployment.h"
#include "settings/DataManager.h"

using Manager = KQHttpManager;
using Server = LoopbackServer;

// How the upload of the first of two records ends, and what is asked of the server after it.
struct Ending {
    LoopbackServer::Answer answer;
    bool hasServerMoved;
    QList<int> sentByTheNextRecord; // lines, in order
};

class TestLinkLog : public QObject {
    Q_OBJECT

    const QByteArray path = "/api/server/push_connect_state";
    const Server::Answer held{{}, 200, Server::Held};
    const Server::Answer accepted{json("{'code':0,'msg':'m'}")};
    std::unique_ptr<Server> server;
    std::unique_ptr<Manager> manager;

    void record(int line)
    {
        manager->addLineLinkInfo(line, {}, "START");
        manager->addLineLinkInfo(line, "ok", "END");
    }

    int sentLine()
    {
        const QByteArray form = server->take(path).form;
        return form.mid(form.indexOf('=') + 1, 1).toInt();
    }

    bool isIdle() const { return manager->findChildren<QNetworkReply *>().isEmpty(); }

    void releaseWith(const Server::Answer &answer)
    {
        server->answer(path, answer);
        QVERIFY(server->release(path));
        server->answer(path, held);
    }

private slots:
    void init()
    {
        server = std::make_unique<Server>();
        server->answer(path, held);
        Deployment::current().ipLookupAddress.clear();
        DataManager::getInstance()->setDomainName(server->baseAddress());
        manager = std::make_unique<Manager>();
    }

    void attemptsAreTimedAndNamed()
    {
        QList<qint64> times{-1, 100, 200};
        LinkLog log([&times] { return times.takeFirst(); });
        QVERIFY(!log.add(5, "ok", "END", 1) && log.size() == 0 && log.current().srvid == 5);
        QVERIFY(!log.add(6, "ignored", "START", 4));
        const auto due = log.add(6, "ok", "END", 1);
        QVERIFY(due && due->srvid == 6 && due->status == "ok" && due->protocol == "KCP");
        QVERIFY(due->start_time == 100 && due->end_time == 200); // a negative clock is read again
    }

    void recordsAreDrainedOneAtATimeInOrder()
    {
        for (const int line : {1, 2, 3}) {
            record(line);
        }
        QSignalSpy told(manager.get(), &Manager::sendPushLinkLogStatus);
        for (const int line : {1, 2, 3}) {
            QCOMPARE(sentLine(), line);
            QCOMPARE(server->requests.size(), 0);
            releaseWith(accepted);
        }
        QTRY_COMPARE(told.size(), 3);
        QTRY_VERIFY(isIdle());
        record(4); // the end of the upload was noticed
        QCOMPARE(sentLine(), 4);
    }

    void anUploadThatEndsWithoutAnAnswerIsTakenUpAgain_data()
    {
        const Rows<Ending> row;
        row("transport error", {{{}, 500}, false, {1}});
        row("no JSON", {{"<html>"}, false, {1}});
        row("an answer after the server has moved", {accepted, true, {1}});
        row("refusal: nothing is sent until a time-out", {{json("{'code':1}")}, false, {}});
    }

    void anUploadThatEndsWithoutAnAnswerIsTakenUpAgain()
    {
        const auto [answer, hasServerMoved, sentByTheNextRecord] = Rows<Ending>::fetch();
        record(1);
        QCOMPARE(sentLine(), 1);
        if (hasServerMoved) {
            DataManager::getInstance()->setIsTestMode(true);
            manager->setTestDomainName("http://localhost:" + QString::number(server->serverPort()));
            manager->getDomainNameFromWeb();
            DataManager::getInstance()->setIsTestMode(false);
        }
        releaseWith(answer);
        QTRY_VERIFY(isIdle());
        record(2);
        QCOMPARE(isIdle(), sentByTheNextRecord.isEmpty());
        for (const int line : sentByTheNextRecord) {
            QCOMPARE(sentLine(), line);
        }
    }

    void anAnswerRemovesTheRecordThatItAnswers()
    {
        record(1);
        QCOMPARE(sentLine(), 1);
        record(2);
        manager->sendPushLinkLog(9, "by hand", 1, 2, "KCP"); // one that was never queued
        QCOMPARE(sentLine(), 9);
        QSignalSpy told(manager.get(), &Manager::sendPushLinkLogStatus);
        releaseWith(accepted); // of the first
        QVERIFY(told.wait());
        QCOMPARE(sentLine(), 2);
        releaseWith(accepted); // of the stranger: the second is on its way and stays queued
        QVERIFY(told.wait());
        QCOMPARE(server->requests.size(), 0);
        releaseWith({{}, 500});
        QTRY_VERIFY(isIdle());
        record(3);
        QCOMPARE(sentLine(), 2); // was not lost
    }

    void aRecordOfAStatusHandlerIsSentOnce()
    {
        manager->sendPushLinkLog(9, "by hand", 1, 2, "KCP");
        QCOMPARE(sentLine(), 9);
        connect(manager.get(), &Manager::sendPushLinkLogStatus, this, [this] {
            disconnect(manager.get(), &Manager::sendPushLinkLogStatus, this, nullptr);
            record(5);
        });
        releaseWith(accepted);
        QCOMPARE(sentLine(), 5);
        QSignalSpy told(manager.get(), &Manager::sendPushLinkLogStatus);
        releaseWith(accepted);
        QVERIFY(told.wait());
        QTRY_VERIFY(isIdle());
        QCOMPARE(server->requests.size(), 0);
    }
};

QTEST_GUILESS_MAIN(TestLinkLog)
#include "tst_link_log.moc"
