#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include "packaging/uninstall/Removal.h"

namespace {

bool put(const QString &path, const QByteArray &content = "x")
{
    QFile file(path);
    return QDir().mkpath(QFileInfo(path).path()) && file.open(QIODevice::WriteOnly)
        && file.write(content) == content.size();
}

QByteArray entryFor(const QString &directory)
{
    return "[Desktop Entry]\nExec=" + directory.toUtf8() + "/VornRun.sh\nIcon=x\n";
}

QStringList filesBelow(const QString &directory)
{
    QStringList files;
    QDirIterator walk(directory,
        QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
        QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        files.append(QDir(directory).relativeFilePath(walk.next()));
    }
    files.sort();
    return files;
}

// An installation with its entries, beside files that nobody may touch.
struct Machine {
    QTemporaryDir root;
    const QString top = QFileInfo(root.path()).canonicalFilePath();
    const QString directory = top + "/opt/VornVPN";
    const QString menu = top + "/menu/Vorn.desktop";
    const QString autostart = top + "/autostart/Vorn.desktop";

    bool install(const QByteArray &manifest = {})
    {
        const char *const written[] = {
            "VornRun.sh", "UninstallRun.sh", "VornData.json", "CommonUsedLine.json"};
        bool done = put(menu, entryFor(directory)) && put(autostart, entryFor(directory))
            && put(top + "/other/neighbour")
            && put(directory + "/manifest.txt",
                "VORN\nUninstall\nlib/libA.so.1\nqml/Q/x.qml\nmanifest.txt\n" + manifest);
        for (const char *file : {"VORN", "Uninstall", "lib/libA.so.1", "qml/Q/x.qml"}) {
            done = done && put(directory + '/' + file);
        }
        for (const char *file : written) {
            done = done && put(directory + '/' + file);
        }
        return done;
    }

    RemovalReport remove(const QString &through = {}) const
    {
        return Removal(through.isEmpty() ? directory : through, {menu, autostart}).run([](int) {});
    }
};

} // namespace

class TestUninstaller : public QObject {
    Q_OBJECT

private slots:
    void wholeInstallationGoes();
    void othersSurvive_data();
    void othersSurvive();
    void strangeManifestLinesAreRefused_data();
    void strangeManifestLinesAreRefused();
    void entryBelongsToTheDirectoryItNames_data();
    void entryBelongsToTheDirectoryItNames();
    void withoutManifestOnlyLaunchersAndEntriesGo();
    void fileThatCannotGoIsTold();
};

void TestUninstaller::wholeInstallationGoes()
{
    Machine machine;
    QVERIFY(machine.install("gone/already\nVORN\n"));
    QVERIFY(QDir().mkpath(machine.directory + "/made/by/the client"));
    QVERIFY(QFile::link(machine.top + "/opt", machine.top + "/link"));
    QList<int> told;
    const RemovalReport report =
        Removal(machine.top + "/link/VornVPN", {machine.menu, machine.autostart})
            .run([&told](int percentage) { told.append(percentage); });
    QCOMPARE(report.kept + report.failed, QStringList());
    QCOMPARE(filesBelow(machine.top),
        QStringList({"autostart", "link", "menu", "opt", "other", "other/neighbour"}));
    QVERIFY(std::is_sorted(told.cbegin(), told.cend()) && told.size() > 5 && told.last() < 100);
    QCOMPARE(machine.remove().failed, QStringList("manifest.txt"));
}

void TestUninstaller::othersSurvive_data()
{
    QTest::addColumn<QString>("file"); // "a -> b" is a link
    QTest::addColumn<QStringList>("kept");
    QTest::newRow("a document") << "letter.odt" << QStringList("letter.odt");
    QTest::newRow("a hidden file") << ".notes" << QStringList(".notes");
    QTest::newRow("a log of any program") << "log.txt" << QStringList("log.txt");
    QTest::newRow("deep among the client's")
        << "qml/Q/my/own.qml" << QStringList("qml/Q/my/own.qml");
    QTest::newRow("a link to a directory") << "shelf -> other" << QStringList("shelf");
    QTest::newRow("a link in a file's place") << "gone -> other/neighbour" << QStringList("gone");
    QTest::newRow("a directory in a file's place") << "gone/mine" << QStringList("gone/mine");
}

void TestUninstaller::othersSurvive()
{
    QFETCH(QString, file);
    QFETCH(QStringList, kept);
    Machine machine;
    QVERIFY(machine.install("gone\n"));
    QVERIFY(QDir().mkpath(machine.directory + "/empty"));
    const QStringList link = file.split(" -> ");
    QVERIFY(link.size() == 1
            ? put(machine.directory + '/' + file)
            : QFile::link(machine.top + '/' + link.last(), machine.directory + '/' + link.first()));
    const RemovalReport report = machine.remove();
    QCOMPARE(report.failed, QStringList());
    kept.append("empty/"); // beside files of others it may be theirs
    kept.sort();
    QCOMPARE(report.kept, kept);
    QVERIFY(QFileInfo::exists(machine.directory + '/' + link.first()));
    QVERIFY(QFileInfo::exists(machine.top + "/other/neighbour"));
    QVERIFY(!QFileInfo::exists(machine.directory + "/lib"));
    QVERIFY(!QFileInfo::exists(machine.menu));
}

void TestUninstaller::strangeManifestLinesAreRefused_data()
{
    QTest::addColumn<QByteArray>("line"); // %1 is the machine's top
    QTest::newRow("upwards") << QByteArray("../../other/neighbour");
    QTest::newRow("down and upwards") << QByteArray("lib/../../../other/neighbour");
    QTest::newRow("absolute") << QByteArray("%1/other/neighbour");
    QTest::newRow("through a link") << QByteArray("outside/neighbour");
    QTest::newRow("through a link further down") << QByteArray("deep/outside/neighbour");
    QTest::newRow("current directory") << QByteArray("./VornData");
    QTest::newRow("doubled slash") << QByteArray("outside//neighbour");
    QTest::newRow("slash at the end") << QByteArray("deep/");
    QTest::newRow("zero byte") << QByteArray("../../other/neighbour\0/x", 24);
}

void TestUninstaller::strangeManifestLinesAreRefused()
{
    QFETCH(QByteArray, line);
    Machine machine;
    line.replace("%1", machine.top.toUtf8());
    QVERIFY(machine.install(line + "\n"));
    QVERIFY(QDir().mkpath(machine.directory + "/deep"));
    for (const char *link : {"/outside", "/deep/outside"}) {
        QVERIFY(QFile::link(machine.top + "/other", machine.directory + link));
    }
    const RemovalReport report = machine.remove();
    QCOMPARE(report.failed, QStringList(QFile::decodeName(line)));
    QCOMPARE(report.kept, QStringList({"deep/outside", "outside"}));
    QVERIFY(QFileInfo::exists(machine.top + "/other/neighbour"));
    QVERIFY(!QFileInfo::exists(machine.directory + "/VORN"));
}

void TestUninstaller::entryBelongsToTheDirectoryItNames_data()
{
    QTest::addColumn<QString>("named"); // %1 is the machine's top
    QTest::addColumn<bool>("goes");
    QTest::newRow("this one") << "%1/opt/VornVPN" << true;
    QTest::newRow("this one, typed carelessly") << "%1//opt/../opt/VornVPN/" << true;
    QTest::newRow("this one, through a link") << "%1/link/VornVPN" << true;
    QTest::newRow("this one, as the folder dialog gives it") << "opt/VornVPN" << true;
    QTest::newRow("another one") << "%1/other" << false;
    QTest::newRow("one whose name goes on") << "%1/opt/VornVPN2" << false;
    QTest::newRow("one whose name ends alike") << "N" << false;
    QTest::newRow("one that is gone") << "%1/nowhere/VornVPN" << false;
}

void TestUninstaller::entryBelongsToTheDirectoryItNames()
{
    QFETCH(QString, named);
    QFETCH(bool, goes);
    Machine machine;
    QVERIFY(machine.install());
    QVERIFY(QFile::link(machine.top + "/opt", machine.top + "/link"));
    QVERIFY(put(machine.menu, entryFor(named.replace("%1", machine.top))));
    QCOMPARE(machine.remove().failed, QStringList());
    QCOMPARE(QFileInfo::exists(machine.menu), !goes);
    QVERIFY(!QFileInfo::exists(machine.autostart));
}

void TestUninstaller::withoutManifestOnlyLaunchersAndEntriesGo()
{
    Machine machine;
    QVERIFY(machine.install());
    QVERIFY(QFile::remove(machine.directory + "/manifest.txt"));
    const RemovalReport report = machine.remove();
    QCOMPARE(report.failed,
        QStringList({"manifest.txt", "CommonUsedLine.json", "Uninstall", "VORN", "VornData.json",
            "lib/libA.so.1", "qml/Q/x.qml"}));
    QCOMPARE(report.kept, QStringList());
    QVERIFY(
        !QFileInfo::exists(machine.menu) && !QFileInfo::exists(machine.directory + "/VornRun.sh"));
    QVERIFY(QFileInfo::exists(machine.directory + "/VORN"));
}

// Runs itself again in a mount namespace where the directory "lib" is read-only: as root no mode
// stops a removal.
void TestUninstaller::fileThatCannotGoIsTold()
{
    const QString given = qEnvironmentVariable("VORN_TEST_READ_ONLY_BELOW");
    if (!given.isEmpty()) {
        const RemovalReport report = Removal(given, {}).run([](int) {});
        QCOMPARE(report.failed, QStringList("lib/libA.so.1"));
        QCOMPARE(report.kept, QStringList());
        return;
    }
    Machine machine;
    QVERIFY(machine.install());
    const QStringList privately{"--mount", "--map-root-user", "--propagation", "private", "sh",
        "-c", R"(mount --bind "$0" "$0" && mount -o remount,bind,ro "$0" && exec "$@")",
        machine.directory + "/lib"};
    if (QProcess::execute("unshare", privately + QStringList("true")) != 0) {
        QTest::qSkip("the kernel refuses private mounts", __FILE__, __LINE__);
        return;
    }
    qputenv("VORN_TEST_READ_ONLY_BELOW", machine.directory.toUtf8());
    const int result = QProcess::execute("unshare",
        privately
            + QStringList({QCoreApplication::applicationFilePath(), "fileThatCannotGoIsTold"}));
    qunsetenv("VORN_TEST_READ_ONLY_BELOW");
    QCOMPARE(result, 0);
    QCOMPARE(filesBelow(machine.directory), QStringList({"lib", "lib/libA.so.1"}));
}

QTEST_GUILESS_MAIN(TestUninstaller)
#include "tst_uninstaller.moc"
