#include "Support.h"
#include "uninstaller/Removal.h"

#include <unistd.h>

namespace {

QByteArray entryFor(const QString &directory)
{
    return "[Desktop Entry]\nExec=" + directory.toUtf8() + "/VornRun.sh\nIcon=x\n";
}

// An installation with its entries, beside files that nobody may touch.
struct Machine {
    QTemporaryDir root;
    const QString top = QFileInfo(root.path()).canonicalFilePath() + '/';
    const QString directory = top + "opt/VornVPN/";
    const QStringList entries{top + "menu/Vorn.desktop", top + "autostart/Vorn.desktop"};

    // A file of the installation, "a/" a directory, "a -> b" a link to what lies beside it.
    bool add(const QString &file, const QByteArray &content = "x") const
    {
        const QStringList link = file.split(" -> ");
        const QString path = directory + link.first();
        return QDir().mkpath(path.left(path.lastIndexOf('/')))
            && (link.size() > 1 ? QFile::link(top + link.last(), path)
                                : path.endsWith('/') || put(path, content));
    }

    bool install(const QByteArray &manifest = {}, const QStringList &more = {}) const
    {
        bool done = add("manifest.txt",
            "VORN\nUninstall\nlib/libA.so.1\nqml/Q/x.qml\nmanifest.txt\n" + manifest);
        const QStringList files{"VORN", "Uninstall", "lib/libA.so.1", "qml/Q/x.qml", "VornRun.sh",
            "UninstallRun.sh", "VornData.json", "CommonUsedLine.json", "../../other/neighbour",
            "../../menu/", "../../autostart/"};
        for (const QString &file : files + more)
            done = done && add(file);
        return done && put(entries.first(), entryFor(directory))
            && put(entries.last(), entryFor(directory));
    }

    RemovalReport remove() const
    {
        return Removal(directory, entries).run([](int) {});
    }
    bool has(const QString &name) const { return QFileInfo::exists(top + name); }
};

} // namespace

class TestUninstaller : public QObject {
    Q_OBJECT

private slots:
    void wholeInstallationGoes()
    {
        const Machine machine;
        QVERIFY(
            machine.install("gone/already\nVORN\n", {"made/by/the client/", "../../link -> opt"}));
        QList<int> told;
        const RemovalReport report =
            Removal(machine.top + "link/VornVPN", machine.entries).run([&told](int percentage) {
                told << percentage;
            });
        QCOMPARE(report.kept + report.failed, QStringList());
        QVERIFY(
            !machine.has("opt/VornVPN") && machine.has("opt") && machine.has("other/neighbour"));
        QVERIFY(!machine.has("menu/Vorn.desktop") && !machine.has("autostart/Vorn.desktop"));
        QVERIFY(std::is_sorted(told.cbegin(), told.cend()) && told.size() > 5 && told.last() < 100);
        QCOMPARE(machine.remove().failed, QStringList("manifest.txt"));
    }

    void whatIsNotItsOwnStays_data()
    {
        const Table<QString, QByteArray> row; // a file of others, a manifest line that is refused
        for (const char *file : {"letter.odt", ".notes", "log.txt", "qml/Q/my/own.qml",
                 "shelf -> other", "gone -> other/neighbour", "gone/mine"})
            row(file, file, "");
        for (const char *line : {"../../other/neighbour", "lib/../../../other/neighbour",
                 "%1other/neighbour", "outside/neighbour", "deep/outside/neighbour", "./VornData",
                 "outside//neighbour", "deep/"})
            row(line, "letter.odt", line);
        row("zero byte", "letter.odt", QByteArray("nobody\0x", 8));
    }

    void whatIsNotItsOwnStays()
    {
        auto [file, line] = Table<QString, QByteArray>::fetch();
        const Machine machine;
        line.replace("%1", machine.top.toUtf8());
        QVERIFY(machine.install(
            "gone\n" + line + "\n", {"empty/", "outside -> other", "deep/outside -> other"}));
        QVERIFY(machine.add(file));
        // An empty directory beside files of others may be theirs.
        QStringList kept{"deep/outside", "empty/", file.section(" -> ", 0, 0), "outside"};
        kept.sort();
        const RemovalReport report = machine.remove();
        QCOMPARE(report.failed.join(' '), QFile::decodeName(line));
        QCOMPARE(report.kept, kept);
        for (const QString &name : kept)
            QVERIFY2(machine.has("opt/VornVPN/" + name), qPrintable(name));
        QVERIFY(machine.has("other/neighbour") && !machine.has("menu/Vorn.desktop"));
        QVERIFY(!machine.has("opt/VornVPN/lib") && !machine.has("opt/VornVPN/VORN"));
    }

    void entryBelongsToTheDirectoryItNames_data()
    {
        const Table<QString, bool> row; // the directory, %1 is the machine's top; whether it goes
        for (const char *ours :
            {"%1opt/VornVPN", "%1/opt/../opt/VornVPN/", "%1link/VornVPN", "opt/VornVPN"}) {
            row(ours, ours, true);
        }
        for (const char *other : {"%1other", "%1opt/VornVPN2", "N", "%1nowhere/VornVPN"})
            row(other, other, false);
    }

    void entryBelongsToTheDirectoryItNames()
    {
        auto [named, goes] = Table<QString, bool>::fetch();
        const Machine machine;
        QVERIFY(machine.install({}, {"../../link -> opt"}));
        QVERIFY(put(machine.entries.first(), entryFor(named.replace("%1", machine.top))));
        QCOMPARE(machine.remove().failed, QStringList());
        QCOMPARE(machine.has("menu/Vorn.desktop"), !goes);
        QVERIFY(!machine.has("autostart/Vorn.desktop"));
    }

    void withoutManifestOnlyLaunchersAndEntriesGo()
    {
        const Machine machine;
        QVERIFY(machine.install() && QFile::remove(machine.directory + "manifest.txt"));
        const RemovalReport report = machine.remove();
        QCOMPARE(report.failed.join(' ') + report.kept.join(' '),
            QString("manifest.txt CommonUsedLine.json Uninstall VORN VornData.json lib/libA.so.1 "
                    "qml/Q/x.qml"));
        QVERIFY(!machine.has("menu/Vorn.desktop") && !machine.has("opt/VornVPN/VornRun.sh")
            && machine.has("opt/VornVPN/VORN"));
    }

    // Modes stop no removal by root.
    void fileThatCannotGoIsTold()
    {
        if (geteuid() == 0 && seteuid(65534) != 0)
            return QTest::qSkip("there is nobody else", __FILE__, __LINE__);
        const Machine machine;
        const bool isInstalled = machine.install();
        const QString library = machine.directory + "lib";
        QFile::setPermissions(library, QFile::ReadOwner | QFile::ExeOwner);
        const RemovalReport report = machine.remove();
        QFile::setPermissions(library, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QVERIFY(seteuid(getuid()) == 0 && isInstalled);
        QCOMPARE(report.failed + report.kept, QStringList("lib/libA.so.1"));
        QVERIFY(machine.has("opt/VornVPN/lib/libA.so.1") && !machine.has("opt/VornVPN/VORN"));
    }
};

QTEST_GUILESS_MAIN(TestUninstaller)
#include "tst_uninstaller.moc"
