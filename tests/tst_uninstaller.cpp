#include "Machine.h"
#include "uninstaller/Uninstaller.h"

#include <functional>

#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// Runs it in a process of its own and returns how that ended, as waitpid() tells it.
int inChild(const std::function<int()> &work)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(work());
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

struct Stranger {
    QString file; // of others, in the installation; "a -> b" is a link
    QByteArray line; // of the manifest, which is refused; %1 is the machine's top
    int error;
};

struct Entry {
    QString directory; // that it names; %1 is the machine's top
    bool goes;
};

using Spoil = std::function<bool(const QString &manifest)>;

constexpr int skipped = 77; // exit status of a child that may not do what it has to

} // namespace

class TestUninstaller : public QObject {
    Q_OBJECT

private slots:
    void wholeInstallationGoes()
    {
        const Machine machine;
        QByteArray lines("VORN\n");
        for (int i = 0; i < 300; ++i)
            lines += "gone/already" + QByteArray::number(i) + '\n';
        QVERIFY(machine.install(lines, {"made/by/the/client/", "../../link -> opt"}));
        const auto descriptors = [] { return QDir("/proc/self/fd").count(); };
        const uint before = descriptors();
        QList<int> told;
        const RemovalReport report =
            Removal(machine.top + "link/VornVPN", machine.entries).run([&told](int percentage) {
                told << percentage;
            });
        QCOMPARE(report.kept + namesOf(report.failed), QStringList());
        QVERIFY(
            !machine.has("opt/VornVPN") && machine.has("opt") && machine.has("other/neighbour"));
        QVERIFY(!machine.has("menu/Vorn.desktop") && !machine.has("autostart/Vorn.desktop"));
        QCOMPARE(descriptors(), before);
        QCOMPARE(told.size(), 99);
        QVERIFY(told.first() == 1 && std::is_sorted(told.cbegin(), told.cend()));
        QCOMPARE(namesOf(machine.remove().failed), QStringList("manifest.txt"));
    }

    void whatIsNotItsOwnStays_data()
    {
        const Rows<Stranger> row;
        row("a letter", {"letter.odt", "", 0});
        row("a link to a directory", {"shelf -> other", "", 0});
        row("a link in a file's place", {"gone -> other/neighbour", "", 0});
        row("a line that climbs later", {"mine", "lib/../../../other/neighbour", EINVAL});
        row("an absolute line", {"mine", "%1other/neighbour", EINVAL});
        row("a line that is a directory", {"mine", "deep/", EINVAL});
        row("a line with a zero byte", {"mine", QByteArray("nobody\0x", 8), EINVAL});
        row("a line longer than paths are", {"mine", QByteArray(5000, 'x'), EINVAL});
        row("a line through a deeper link", {"mine", "deep/outside/neighbour", ENOTDIR});
    }

    void whatIsNotItsOwnStays()
    {
        auto [file, line, error] = Rows<Stranger>::fetch();
        const Machine machine;
        line.replace("%1", machine.top.toUtf8());
        QVERIFY(machine.install("gone\n" + line + '\n' + line,
            {"empty/", "outside -> other", "deep/outside -> other"}));
        QVERIFY(machine.add(file));
        // An empty directory beside files of others may be theirs.
        QStringList kept{"deep/outside", "empty/", file.section(" -> ", 0, 0), "outside"};
        kept.sort();
        const RemovalReport report = machine.remove();
        QCOMPARE(namesOf(report.failed).join(' '), QFile::decodeName(line));
        QCOMPARE(report.failed.isEmpty() ? 0 : report.failed.first().error, error);
        QCOMPARE(report.kept, kept);
        for (const QString &name : kept)
            QVERIFY2(machine.has("opt/VornVPN/" + name), qPrintable(name));
        QVERIFY(machine.has("other/neighbour") && !machine.has("menu/Vorn.desktop"));
        QVERIFY(!machine.has("opt/VornVPN/lib") && !machine.has("opt/VornVPN/VORN"));
    }

    void entryBelongsToTheDirectoryItNames_data()
    {
        const Rows<Entry> row;
        row("the directory", {"%1opt/VornVPN", true});
        row("a path through a link", {"%1link/VornVPN", true});
        row("a path without its first slash", {"opt/VornVPN", true});
        row("a longer name", {"%1opt/VornVPN2", false});
        row("a directory that is not there", {"%1nowhere/VornVPN", false});
    }

    void entryBelongsToTheDirectoryItNames()
    {
        auto [named, goes] = Rows<Entry>::fetch();
        const Machine machine;
        QVERIFY(machine.install({}, {"../../link -> opt"}));
        named.replace("%1", machine.top);
        QVERIFY(put(machine.entries.first(), Machine::entryFor(named)));
        QVERIFY(put(machine.entries.last(), "[Desktop Entry]\nExec=/usr/bin/other\n"));
        QCOMPARE(namesOf(machine.remove().failed), QStringList());
        QCOMPARE(machine.has("menu/Vorn.desktop"), !goes);
        QVERIFY(machine.has("autostart/Vorn.desktop"));
    }

    void earlierVersionsAndKilledWritersLeaveNothing()
    {
        const Machine machine;
        QVERIFY(machine.install({},
            {"VornData.json.aZbYcX", "manifest.old.txt.abcdef", ".VornRun.sh.3w5e11264sgsf",
                "errorlog.txt", "old/library.so", "lib/.vorn.1y2p0ij32e8e7/libB.so",
                "qml/Q/.vorn.0/"}));
        QVERIFY(machine.add("manifest.old.txt", "old/library.so\nold/gone.so\n"));
        const RemovalReport report = machine.remove();
        QCOMPARE(report.kept + namesOf(report.failed), QStringList());
        QVERIFY(!machine.has("opt/VornVPN"));
    }

    void earlierManifestThatIsALinkIsTold()
    {
        const Machine machine;
        QVERIFY(machine.install({}, {"manifest.old.txt -> other/neighbour"}));
        const RemovalReport report = machine.remove();
        QCOMPARE(namesOf(report.failed) + report.kept, QStringList("manifest.old.txt"));
        QCOMPARE(report.failed.first().error, ELOOP);
        QVERIFY(machine.has("other/neighbour") && !machine.has("opt/VornVPN/VORN"));
    }

    void swappedParentLeadsNowhereElse()
    {
        const Machine machine;
        QVERIFY(machine.install({},
            {"../../decoy/VornVPN/VORN", "../../decoy/VornVPN/lib/libA.so.1",
                "../../decoy/VornVPN/manifest.txt"}));
        bool isSwapped = false;
        const RemovalReport report = machine.remove([&](int) {
            if (!isSwapped)
                isSwapped = QDir(machine.top).rename("opt", "moved")
                    && QFile::link(machine.top + "decoy", machine.top + "opt");
        });
        QVERIFY(isSwapped && machine.has("decoy/VornVPN/VORN"));
        QVERIFY(machine.has("decoy/VornVPN/lib/libA.so.1")
            && machine.has("decoy/VornVPN/manifest.txt"));
        QCOMPARE(report.kept + namesOf(report.failed), QStringList());
        QVERIFY(!machine.has("moved/VornVPN"));
    }

    // The same one, mounted again, in a mount name space of the child's own.
    void otherFileSystemIsNotEntered()
    {
        const Machine machine;
        QVERIFY(machine.install("disk/named\n", {"disk/", "../../other/named"}));
        const QByteArray disk = QFile::encodeName(machine.directory + "disk");
        const QByteArray other = QFile::encodeName(machine.top + "other");
        const int status = inChild([&] {
            if (unshare(geteuid() == 0 ? CLONE_NEWNS : CLONE_NEWNS | CLONE_NEWUSER) != 0
                || mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0
                || mount(other.constData(), disk.constData(), nullptr, MS_BIND, nullptr) != 0)
                return skipped;
            put(machine.directory + "disk/named", "of others");
            const RemovalReport report = machine.remove();
            return namesOf(report.failed) == QStringList("disk/named")
                    && report.failed.first().error == EXDEV && report.kept == QStringList("disk/")
                    && machine.has("opt/VornVPN/disk/named") && !machine.has("opt/VornVPN/VORN")
                ? 0
                : 1;
        });
        if (WIFEXITED(status) && WEXITSTATUS(status) == skipped)
            QSKIP("nothing can be mounted here");
        QCOMPARE(status, 0);
    }

    void withoutManifestOnlyLaunchersAndEntriesGo_data()
    {
        const Rows<Spoil> row;
        row("none", [](const QString &manifest) { return QFile::remove(manifest); });
        row("a pipe", [](const QString &manifest) {
            return QFile::remove(manifest) && mkfifo(qPrintable(manifest), 0600) == 0;
        });
    }

    void withoutManifestOnlyLaunchersAndEntriesGo()
    {
        const auto spoil = Rows<Spoil>::fetch();
        const Machine machine;
        QVERIFY(machine.install() && spoil(machine.directory + "manifest.txt"));
        const RemovalReport report = machine.remove();
        QStringList failed = namesOf(report.failed);
        QCOMPARE(failed.takeFirst(), QString("manifest.txt"));
        QVERIFY(report.failed.first().error != 0);
        QCOMPARE(failed,
            QStringList({"CommonUsedLine.json", "Uninstall", "VORN", "VornData.json", "VornInstall",
                "data/a", "lib/libA.so.1", "plugins/p.so", "qml/Q/x.qml", "qt.conf", "start.sh"}));
        QCOMPARE(report.kept, QStringList());
        QVERIFY(!machine.has("menu/Vorn.desktop") && !machine.has("opt/VornVPN/VornRun.sh")
            && machine.has("opt/VornVPN/VORN"));
    }

    void removesWhereNoThreadIsToBeHad()
    {
        const int status = inChild([] {
            const rlimit none = {0, 0};
            if ((geteuid() == 0 && setuid(65534) != 0) || setrlimit(RLIMIT_NPROC, &none) != 0)
                return skipped;
            const Machine machine;
            const bool isInstalled = machine.install();
            Uninstaller uninstaller{Removal(machine.directory, machine.entries)};
            uninstaller.start();
            QCoreApplication::sendPostedEvents(&uninstaller);
            const bool isGone = uninstaller.failed().isEmpty() && !machine.has("opt/VornVPN");
            return isInstalled && isGone ? 0 : 1;
        });
        if (WIFEXITED(status) && WEXITSTATUS(status) == skipped)
            QSKIP("processes cannot be limited here");
        QCOMPARE(status, 0);
    }
};

QTEST_GUILESS_MAIN(TestUninstaller)
#include "tst_uninstaller.moc"
