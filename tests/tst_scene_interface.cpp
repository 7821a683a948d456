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

struct Example {
    QString scene;
    QString printed;
};

struct Checked {
    QString type;
    QString line;
    QString complaint;
};

// A fenced scene, directly followed by the fenced line that it prints, under a heading.
std::vector<std::pair<QString, Example>> examplesOf(const QString &document)
{
    const QRegularExpression form(
        "```qml\n(.*?)```\n```text\n(.*?)\n```", QRegularExpression::DotMatchesEverythingOption);
    std::vector<std::pair<QString, Example>> examples;
    for (const QString &section : document.split("\n## ").mid(1)) {
        const auto example = form.match(section);
        examples.push_back(
            {section.section('\n', 0, 0), {example.captured(1), example.captured(2)}});
    }
    return examples;
}

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
        server.answer("/api/system/index",
            {json("{'code':0,'data':{'wap_article_help_list':'http://help.example'}}")});
        server.answer("/api/account/login",
            {json("{'code':3,'msg':'Wrong password','data':{'error_position':'2'}}")});
        server.answer("/api/server/get_all_v2",
            {json("{'code':0,'data':[{'name_en':'Japan','servers':"
                  "[{'country_id':81,'id':1},{'country_id':81,'id':2}]}]}")});
        server.answer("/api/system/updateInfo",
            {json("{'code':0,'data':{'version':3,'version_show':'2.0.1',"
                  "'content':'Faster lines'}}")});
        server.answer("/api/system/questions",
            {json("{'code':0,'data':[{'_de':'Zu langsam'},{'_de':'Kein Netz'}]}")});
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
        const QString manual = contentOf(VORN_SOURCE_DIR "/docs/scene-interface.md");
        for (const auto &[heading, example] : examplesOf(manual)) {
            row(qPrintable(heading), example);
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

    void qmllintKnowsWhatTheTypesHave_data()
    {
        const Rows<Checked> row;
        row("what there is", {"Operating", "onCopyDirectorySuccess: creatVornRunShell()", ""});
        row("no such call",
            {"KQHttpManager", "Component.onCompleted: it.getInitInform()",
                "Property \"getInitInform\" not found on type \"KQHttpManager\""});
        row("no such call of the settings",
            {"Operating", "Component.onCompleted: DataManager.isHere()",
                "Property \"isHere\" not found on type \"DataManager\""});
        row("no such signal",
            {"Operating", "onCopied: {}", "no matching signal found for handler \"onCopied\""});
    }

    void qmllintKnowsWhatTheTypesHave()
    {
        const auto [type, line, complaint] = Rows<Checked>::fetch();
        QVERIFY(put("checked.qml",
            QString("import QtQml 2.2\nimport VORN.DataManager 1.0\nimport VORN.%1 1.0\n"
                    "%1 {\n    id: it\n    %2\n}\n")
                .arg(type, line)
                .toUtf8()));
        QProcess qmllint;
        qmllint.setProcessChannelMode(QProcess::MergedChannels);
        qmllint.start("qmllint",
            {"-U", "-I", VORN_TYPE_DESCRIPTIONS, "-I",
                QLibraryInfo::location(QLibraryInfo::Qml2ImportsPath), "checked.qml"});
        QVERIFY(qmllint.waitForFinished());
        const QString said = qmllint.readAll();
        QVERIFY2(complaint.isEmpty() ? !said.contains("Warning") && !said.contains("not found")
                                     : said.contains(complaint),
            qPrintable(said));
    }
};

QTEST_MAIN(TestSceneInterface)
#include "tst_scene_interface.moc"
