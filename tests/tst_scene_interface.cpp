#include "LoopbackServer.h"
#include "Support.h"
#include "app/StartUp.h"
#include "base/Deployment.h"
#include "crypto/Encryption.h"
#include "installer/Operating.h"
#include "settings/DataManager.h"

#include <QQmlComponent>
#include <QQmlEngine>

namespace {

QStringList printedLines;

void keepPrinted(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (qstrcmp(context.category, "qml") == 0 || type == QtWarningMsg) {
        printedLines.append(message);
    }
}

// A fenced scene and the fenced line that it prints, which follows.
struct Example {
    QString scene;
    QString printed;
};

} // namespace

class TestSceneInterface : public QObject {
    Q_OBJECT

    LoopbackServer server;
    QTemporaryDir place;

private slots:
    void initTestCase()
    {
        registerQmlTypes();
        qInstallMessageHandler(keepPrinted);
        QVERIFY(QDir::setCurrent(place.path()) && QDir().mkpath("source/below"));
        QVERIFY(put("source/one", "one"));
        Deployment::current().ipLookupAddress.clear();
        Deployment::current().mirrorAddresses = QStringList(server.baseAddress() + "/cookie.txt");
        const auto cipher = Encryption().encode(server.baseAddress().toStdString());
        server.answer("/cookie.txt", {QByteArray::fromStdString(cipher)});
        DataManager::getInstance()->setDomainName(server.baseAddress());
    }

    void cleanupTestCase()
    {
        qInstallMessageHandler(nullptr);
        Operating::waitForCopies();
    }

    void examplesOfTheManualPrintWhatItSays_data()
    {
        const Rows<Example> row;
        const QRegularExpression form("```qml\n(.*?)```\n```text\n(.*?)\n```",
            QRegularExpression::DotMatchesEverythingOption);
        const QString manual = contentOf(VORN_SOURCE_DIR "/docs/scene-interface.md");
        static const QRegularExpression reply("answers `(.*?)` with\\s`(.*?)`");
        for (auto found = reply.globalMatch(manual); found.hasNext();) {
            const QStringList match = found.next().capturedTexts();
            server.answer(match[1].toLatin1(), {match[2].toUtf8()});
        }
        for (const QString &section : manual.split("\n## ").mid(1)) {
            const auto example = form.match(section);
            row(qPrintable(section.section('\n', 0, 0)),
                {example.captured(1), example.captured(2)});
        }
    }

    void examplesOfTheManualPrintWhatItSays()
    {
        const auto [scene, printed] = Rows<Example>::fetch();
        printedLines.clear();
        QQmlEngine engine;
        QQmlComponent component(&engine);
        component.setData(scene.toUtf8(), QUrl("example.qml"));
        const std::unique_ptr<QObject> object(component.create());
        QTRY_VERIFY(!printedLines.isEmpty());
        QCOMPARE(printedLines.join('\n'), printed);
        QCOMPARE(server.complaints, QStringList());
    }

    void qmllintKnowsWhatTheTypesHave()
    {
        QVERIFY(put("checked.qml",
            "import QtQml 2.2\nimport VORN.DataManager 1.0\nimport VORN.KQHttpManager 1.0\n"
            "KQHttpManager {\n    id: it\n"
            "    onLoginStatus: signOut()\n"
            "    onCopied: DataManager.isHere()\n"
            "    Component.onCompleted: it.getInitInform(DataManager.getIsBootUp())\n}\n"));
        QProcess qmllint;
        qmllint.setProcessChannelMode(QProcess::MergedChannels);
        qmllint.start("qmllint",
            {"-U", "-I", VORN_TYPE_DESCRIPTIONS, "-I",
                QLibraryInfo::location(QLibraryInfo::Qml2ImportsPath), "checked.qml"});
        QVERIFY(qmllint.waitForFinished());
        const QString said = qmllint.readAll();
        QVERIFY2(said.contains("no matching signal found for handler \"onCopied\"")
                && said.contains("Property \"isHere\" not found on type \"DataManager\"")
                && said.contains("Property \"getInitInform\" not found on type \"KQHttpManager\"")
                && said.count("Warning") == 3,
            qPrintable(said));
    }
};

QTEST_MAIN(TestSceneInterface)
#include "tst_scene_interface.moc"
