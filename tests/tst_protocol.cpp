#include "LoopbackServer.h"
#include "Manual.h"
#include "Spies.h"
#include "api/Endpoints.h"
#include "api/KQHttpManager.h"
#include "api/RequestSignature.h"
#include "base/Deployment.h"
#include "crypto/Encryption.h"
#include "installer/Operating.h"
#include "settings/DataManager.h"

#include <QtQml>

namespace {

QString manual() { return contentOf(VORN_SOURCE_DIR "/docs/protocol.md"); }

struct WorkedCall {
    QString call; // as a scene writes it
    QByteArray path;
    QString form;
    QByteArray reply;
    QString heard;
};

QList<WorkedCall> workedCalls()
{
    QList<WorkedCall> calls;
    for (const QStringList &cells : tableBelow("## Worked calls")) {
        const auto code = [&cells](int column) { return codeIn(cells[column]).value(0); };
        calls.append({code(0), "/api/" + code(1).toLatin1(), code(2), code(3).toUtf8(), code(4)});
    }
    return calls;
}

QStringList fieldNames(const QString &form)
{
    static const QRegularExpression field("(?:^| )(\\w+)=");
    QStringList names;
    for (auto found = field.globalMatch(form); found.hasNext();) {
        names.append(found.next().captured(1));
    }
    return names;
}

QByteArray sources()
{
    QByteArray all;
    for (const char *folder : {"api", "lines", "base"}) {
        const QDir directory(QString(VORN_SOURCE_DIR "/") + folder);
        for (const QString &name : directory.entryList({"*.cpp", "*.h"})) {
            all += contentOf(directory.filePath(name));
        }
    }
    return all;
}

} // namespace

class TestProtocol : public QObject {
    Q_OBJECT

    LoopbackServer server;

private slots:
    void init()
    {
        Deployment::current().ipLookupAddress.clear();
        DataManager &settings = *DataManager::getInstance();
        settings.setDomainName(server.baseAddress());
        settings.setUserInfo(UserInfo());
        settings.setUserName("me");
        settings.setUserNickName("N");
        settings.setUserGoogleId("G7");
        settings.setUserGooglePicture("p");
        settings.setSoftVersion("7");
        settings.setSoftShowVersion("1.0.7");
        settings.setIsVisitorLoginStatus(true);
    }

    void callsPostAndReportWhatTheManualSays_data()
    {
        const Rows<WorkedCall> row;
        for (const WorkedCall &call : workedCalls()) {
            row(qPrintable(call.call + ' ' + call.reply), call);
        }
    }

    void callsPostAndReportWhatTheManualSays()
    {
        const auto [call, path, form, reply, heard] = Rows<WorkedCall>::fetch();
        server.answer(path, {reply});
        KQHttpManager manager;
        manager.appendSearchWordList("tokyo");
        const Spies spies = spiesOn(&manager);
        QQmlEngine engine;
        QQmlExpression(engine.rootContext(), &manager, call).evaluate();
        QCOMPARE(server.take(path).form, QString("POST " + form).trimmed().toUtf8());
        QTRY_VERIFY(manager.findChildren<QNetworkReply *>().isEmpty());
        QCOMPARE(written(spies), heard);
        QCOMPARE(server.complaints, QStringList());
    }

    void everyEndpointOfTheManualIsCalled()
    {
        QSet<QStringList> called; // function, path and fields
        for (const WorkedCall &call : workedCalls()) {
            called.insert(
                QStringList{call.call.section('(', 0, 0), call.path} + fieldNames(call.form));
        }
        QSet<QStringList> described;
        for (const QStringList &cells : tableBelow("## Endpoints")) {
            const QString path = codeIn(cells[1]).value(0);
            described.insert(
                QStringList{codeIn(cells[0]).value(0).section('(', 0, 0), path} + codeIn(cells[2]));
            const Endpoint *endpoint = findEndpoint(path);
            QVERIFY(endpoint != nullptr);
            QCOMPARE(QString(endpoint->timeOutName), codeIn(cells[4]).value(0));
        }
        QCOMPARE(called, described);
    }

    void everyPathIsInTheManual()
    {
        static const QRegularExpression path("\"(/api/[^\"]*)\"");
        for (auto found = path.globalMatch(contentOf(VORN_SOURCE_DIR "/api/Endpoints.cpp"));
             found.hasNext();) {
            const QString text = found.next().captured(1);
            QVERIFY2(manual().contains("| `" + text + "` |"), qPrintable(text));
        }
    }

    void keysOfRepliesAreReadByTheCode()
    {
        QStringList keys;
        for (const QStringList &cells : tableBelow("## Endpoints")) {
            keys += codeIn(cells[3]);
        }
        for (const char *heading :
            {"## Replies", "### The initialisation record", "### The line catalogue"}) {
            for (const QStringList &cells : tableBelow(heading)) {
                keys += codeIn(cells[0]);
            }
        }
        const QByteArray code = sources();
        for (const QString &key : keys) {
            QVERIFY2(code.contains('"' + key.toLatin1() + '"'), qPrintable(key));
        }
    }

    void requestsCarryTheHeadersOfTheManual()
    {
        QStringList expected;
        for (const QStringList &cells : tableBelow("## Requests")) {
            expected += codeIn(cells[0]);
        }
        if (Operating::getMac().isEmpty()) { // a machine without an adapter has no name to send
            expected.removeAll("_salt");
            expected.removeAll("_sn");
        }
        UserInfo user; // an empty value is not sent
        user.setUid(42);
        user.setSession("s3ss10n");
        user.setRadiusUserName("r42");
        DataManager::getInstance()->setUserInfo(user);
        DataManager::getInstance()->setSoftUseLanguage("_en");
        QNetworkRequest request;
        KQHttpManager().createHttpHeader(request);
        DataManager::getInstance()->setUserInfo(UserInfo());
        QStringList sent;
        for (const QByteArray &name : request.rawHeaderList()) {
            sent.append(name);
        }
        QCOMPARE(sent, expected);
    }

    void workedExamplesComeOutAsTheManualSays()
    {
        const QString signature = manual().section("### The signature", 1);
        QCOMPARE(signatureOf(signature.section("```text\n", 1).section('\n', 0, 0).toUtf8()),
            codeIn(signature.section("```", 2)).value(0).toUtf8());
        const auto steps = tableBelow("### The cipher, step by step");
        QCOMPARE(Encryption().decode(codeIn(steps.last()[1]).value(0).toStdString()),
            codeIn(steps.first()[1]).value(0).toStdString());
    }
};

QTEST_MAIN(TestProtocol)
#include "tst_protocol.moc"
