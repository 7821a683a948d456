#include "LoopbackServer.h"
#include "Support.h"
#include "api/Endpoints.h"
#include "api/KQHttpManager.h"
#include "api/RequestSignature.h"
#include "base/Deployment.h"
#include "crypto/Encryption.h"
#include "installer/Operating.h"
#include "settings/DataManager.h"

namespace {

QString manual() { return contentOf(VORN_SOURCE_DIR "/docs/protocol.md"); }

QStringList codeIn(const QString &text)
{
    static const QRegularExpression code("`([^`]*)`");
    QStringList words;
    for (auto found = code.globalMatch(text); found.hasNext();) {
        words.append(found.next().captured(1));
    }
    return words;
}

// The cells of the table below a heading, without the heading line of the table.
QList<QStringList> tableBelow(const QString &heading)
{
    QList<QStringList> rows;
    for (const QString &line : manual().section("\n" + heading + "\n", 1).split('\n')) {
        if (line.startsWith("|")) {
            rows.append(line.mid(1).split('|'));
        } else if (!rows.isEmpty()) {
            break;
        }
    }
    return rows.mid(2);
}

struct Row {
    QString call;
    QString path;
    QStringList fields;
    QStringList keys;
    QString timeOutName;
};

// Calls `name("literal", argument)`; an argument that is no literal has its own name as its value.
bool invoke(QObject &manager, const QString &call)
{
    const QString name = call.section('(', 0, 0);
    QStringList values = call.section('(', 1).chopped(1).split(", ", Qt::SkipEmptyParts);
    values.replaceInStrings("\"", "");
    const QMetaObject *meta = manager.metaObject();
    for (int index = meta->methodOffset(); index < meta->methodCount(); ++index) {
        const QMetaMethod method = meta->method(index);
        if (method.name() != name || method.parameterCount() != values.size()) {
            continue;
        }
        QVariantList arguments;
        std::array<QGenericArgument, 7> generic;
        for (int i = 0; i < values.size(); ++i) {
            const int type = method.parameterType(i);
            arguments.append(type == QMetaType::QString ? QVariant(values[i]) : QVariant(1));
            arguments[i].convert(type);
        }
        for (int i = 0; i < values.size(); ++i) {
            generic[std::size_t(i)] =
                QGenericArgument(arguments[i].typeName(), arguments[i].constData());
        }
        return method.invoke(&manager, generic[0], generic[1], generic[2], generic[3], generic[4],
            generic[5], generic[6]);
    }
    return false;
}

QStringList fieldNames(const QByteArray &form)
{
    static const QRegularExpression field(" (\\w+)=");
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
        DataManager::getInstance()->setDomainName(server.baseAddress());
    }

    void callsPostWhatTheManualSays_data()
    {
        const Rows<Row> row;
        for (const QStringList &cells : tableBelow("## Endpoints")) {
            const QString call = codeIn(cells[0]).value(0);
            row(qPrintable(call),
                {call, codeIn(cells[1]).value(0), codeIn(cells[2]), codeIn(cells[3]),
                    codeIn(cells[4]).value(0)});
        }
    }

    void callsPostWhatTheManualSays()
    {
        const auto [call, path, fields, keys, timeOutName] = Rows<Row>::fetch();
        server.answer(path.toLatin1(), {"{}"});
        KQHttpManager manager;
        manager.appendSearchWordList("tokyo");
        QVERIFY(invoke(manager, call));
        QCOMPARE(fieldNames(server.take(path.toLatin1()).form), fields);
        const Endpoint *endpoint = findEndpoint(path);
        QVERIFY(endpoint != nullptr);
        QCOMPARE(QString(endpoint->timeOutName), timeOutName);
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
