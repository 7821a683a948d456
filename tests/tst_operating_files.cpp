#include "OtherUser.h"
#include "Support.h"
#include "installer/Operating.h"
#include "settings/DataManager.h"

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>

namespace {

// Plants, below a directory, what the entries say: "directory/", "file=content", "link->target" or
// "pipe|".
void plant(const QString &root, const QStringList &entries)
{
    for (const QString &entry : entries) {
        const QString path = root + '/' + entry.section(QRegularExpression("=|->|\\|"), 0, 0);
        QVERIFY(QDir().mkpath(entry.endsWith('/') ? path : QFileInfo(path).path()));
        if (entry.contains("->"))
            QVERIFY(QFile::link(entry.section("->", 1), path));
        else if (entry.endsWith('|'))
            QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        else if (entry.contains('='))
            QVERIFY(put(path, entry.section('=', 1).toUtf8()));
    }
}

// What is there, in the same words.
QStringList tree(const QString &root)
{
    QStringList entries;
    QDirIterator walk(root, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
        QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString name = QDir(root).relativeFilePath(walk.next());
        const QFileInfo info = walk.fileInfo();
        entries += info.isSymLink() ? QString(name + "->" + info.symLinkTarget().section('/', -1))
            : info.isDir()          ? QString(name + '/')
            : info.isFile()         ? QString(name + '=' + contentOf(info.filePath()))
                                    : QString(name + '|');
    }
    entries.sort();
    return entries;
}

int modeOf(const QString &path) { return int(QFile::permissions(path)) & 0x0777; }

enum IfThere { Covered, Kept };
enum Result { Fails, Succeeds };

struct TreeCopy {
    QStringList planted; // the source is s
    QString target;
    IfThere old;
    Result result;
    int directoriesDone;
    QStringList found; // in the target
};

struct FailingCopy {
    QStringList planted;
    QString target;
    void (*spoil)();
    QString message; // ROOT stands for the directory of the test
    QStringList found; // in the whole directory, but the source
};

struct Removal {
    QStringList planted;
    QString path;
    Result result;
    QStringList found;
};

struct Creation {
    QStringList planted;
    QString path;
    bool isOverwriting;
    Result result;
    QStringList found;
};

struct Launcher {
    QStringList planted;
    bool isHisDirectory; // somebody else's
    Result result;
};

void spoilNothing() { }
void giveLinksAway() { QVERIFY(OtherUser::owns("way") && OtherUser::owns("t/d")); }

} // namespace

class TestOperatingFiles : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> dir;
    QString root;
    Operating operating;

private slots:
    void init()
    {
        dir = std::make_unique<QTemporaryDir>();
        root = QFileInfo(dir->path()).canonicalFilePath();
        QVERIFY(QDir::setCurrent(root));
    }

    void copiesATree_data()
    {
        const Rows<TreeCopy> row;
        row("three nested directories",
            {{"s/a/b/f=1", "s/g=2"}, "t", Kept, Succeeds, 3, {"a/", "a/b/", "a/b/f=1", "g=2"}});
        row("hidden entries and pipes stay behind",
            {{"s/.f=1", "s/.d/f=1", "s/f=2", "s/p|"}, "t", Covered, Succeeds, 1, {"f=2"}});
        row("the source behind a link", {{"s/f=1", "t->s"}, "t", Covered, Succeeds, 1, {"f=1"}});
        row("links become copies",
            {{"s/d/f=1", "s/e->d", "s/g->d/f", "s/x->none"}, "t", Covered, Succeeds, 3,
                {"d/", "d/f=1", "e/", "e/f=1", "g=1"}});
        row("an existing file stops the copy",
            {{"s/a=1", "s/b=2", "s/c=3", "t/b=old"}, "t", Kept, Fails, 0, {"a=1", "b=old"}});
        row("a dangling link in its place",
            {{"s/f=1", "t/f->none", "t/g=2"}, "t", Covered, Succeeds, 1, {"f=1", "g=2"}});
        row("the parent is missing", {{"s/f=1"}, "none/t", Covered, Fails, 0, {}});
        row("the source itself",
            {{"s/f=1", "s/d/g=2"}, "s", Covered, Succeeds, 1, {"d/", "d/g=2", "f=1"}});
        row("the source behind a link and back",
            {{"s/d/f=1", "s/g=2", "x/into->../s/d"}, "x/into/..", Covered, Succeeds, 1,
                {"d/", "d/f=1", "g=2"}});
        row("a part is its own target",
            {{"s/d/f=1", "t/d->../s/d"}, "t", Covered, Succeeds, 2, {"d->d"}});
        row("a target inside the source",
            {{"s/d/f=1", "s/g=2"}, "s/d/t", Covered, Succeeds, 2, {"d/", "d/f=1", "g=2"}});
        row("a link to a parent directory",
            {{"s/d/f=1", "s/d/up->..", "s/top->.."}, "t", Covered, Succeeds, 3,
                {"d/", "d/f=1", "top/"}});
    }

    void copiesATree()
    {
        const auto [planted, path, old, result, directoriesDone, found] = Rows<TreeCopy>::fetch();
        plant(root, planted);
        const QStringList source = tree(root + "/s");
        const QSignalSpy done(&operating, &Operating::copyDirectorySuccess);
        const QString target = root + '/' + path;
        QCOMPARE(
            operating.copyDirectoryFiles(root + "/s", target, old == Covered), result == Succeeds);
        QCOMPARE(done.count(), directoriesDone);
        QCOMPARE(tree(target), found);
        for (const QString &entry : source)
            QVERIFY(tree(root + "/s").contains(entry));
    }

    void tellsWhyItFailed_data()
    {
        const Rows<FailingCopy> row;
        row("the parent is missing",
            {{"s/f=1", "s/g=2"}, "none/t", spoilNothing,
                "“ROOT/none/t” could not be created: no such directory. Not copied: 2 of 2 files.",
                {}});
        row("a directory has the name of a file",
            {{"s/a=1", "s/b=2", "t/b/"}, "t", spoilNothing,
                "“b” could not be written to “ROOT/t”: something else has this name. "
                "Not copied: 1 of 2 files.",
                {"t/", "t/a=1", "t/b/"}});
        row("there is no source",
            {{}, "t", spoilNothing,
                "“ROOT/s” could not be read: no such directory. Not copied: 1 of 1 files.",
                {"t/"}});
        row("a link to a pipe",
            {{"s/d/f->../p", "s/p|"}, "t", spoilNothing,
                "“ROOT/s/d/f” could not be read: not a regular file. Not copied: 1 of 1 files.",
                {"t/", "t/d/"}});
        row("a name that is no text",
            {{"s/a=1"}, "t", [] { QVERIFY(close(creat("s/\xff", 0600)) == 0); },
                "“ROOT/s” could not be read: a name in it is no text. Not copied: 1 of 1 files.",
                {"t/"}});
        row("a link of somebody else below the target",
            {{"s/d/f=1", "t/d->../e", "way->e", "e/"}, "t", giveLinksAway,
                "“ROOT/t/d” could not be created: a link of somebody else has this name. "
                "Not copied: 1 of 1 files.",
                {"e/", "t/", "t/d->e", "way->e"}});
    }

    void tellsWhyItFailed()
    {
        const auto [planted, target, spoil, message, found] = Rows<FailingCopy>::fetch();
        if (spoil == giveLinksAway && !OtherUser::exists())
            QSKIP("only root can be somebody else");
        plant(root, planted);
        spoil();
        const QSignalSpy ended(&operating, &Operating::sendSystemCmdResult);
        operating.copyDirectoryFilesThread("s", target, true);
        Operating::waitForCopies();
        QCOMPARE(ended.count(), 1);
        QCOMPARE(ended[0], QVariantList({false, QString(message).replace("ROOT", root)}));
        QStringList left = tree(root);
        left.erase(std::remove_if(left.begin(), left.end(),
                       [](const QString &entry) { return entry.startsWith("s/"); }),
            left.end());
        QCOMPARE(left, found);
    }

    void lackOfRightsIsTold()
    {
        if (!OtherUser::exists())
            QSKIP("only root can be somebody else");
        plant(root, {"s/d/f=1", "t/"});
        QCOMPARE(chmod(".", 0755) + chmod("s/d", 0), 0);
        const QSignalSpy ended(&operating, &Operating::sendSystemCmdResult);
        {
            const OtherUser::Rights rights;
            QVERIFY(rights.isTaken);
            operating.copyDirectoryFilesThread(root + "/s", root + "/t", true);
            Operating::waitForCopies();
            QVERIFY(!operating.copyDirectoryFiles(root + "/s/d", root + "/t", true)); // unreadable
        }
        QCOMPARE(ended[0].at(1).toString(),
            "“" + root + "/t/d” could not be created: no rights. Not copied: 1 of 1 files.");
    }

    void hisDirectoryGetsOurFiles()
    {
        if (!OtherUser::exists())
            QSKIP("only root can be somebody else");
        plant(
            root, {"s/d/f=1", "s/e/f=1", "s/g=2", "t/d/f=old", "t/g->../private", "private=kept"});
        QVERIFY(OtherUser::owns("t") && OtherUser::owns("t/d") && OtherUser::owns("t/d/f")
            && OtherUser::owns("t/g"));
        const int watch = inotify_init1(IN_NONBLOCK);
        QVERIFY(inotify_add_watch(watch, "t", IN_ATTRIB | IN_CREATE) >= 0);
        QVERIFY(operating.copyDirectoryFiles(root + "/s", root + "/t", true));
        QByteArray changed(4096, '\0');
        changed.resize(static_cast<int>(read(watch, changed.data(), 4096)));
        QCOMPARE(close(watch), 0);
        // Only a directory of ours was made there: no mode was set by a name that he could change.
        for (int at = 0; at < changed.size();) {
            const auto *event = reinterpret_cast<const inotify_event *>(changed.constData() + at);
            QVERIFY2((event->mask & IN_ISDIR) != 0, event->name);
            at += static_cast<int>(sizeof *event + event->len);
        }
        QCOMPARE(tree(root + "/t"), tree(root + "/s"));
        QCOMPARE(contentOf("private"), QByteArray("kept"));
        QCOMPARE(QFileInfo("t/d/f").ownerId() + QFileInfo("t/g").ownerId(), 0U);
        QVERIFY(!operating.copyDirectoryFiles(root + "/s", root + "/t", false));
    }

    void modesAreTheSources()
    {
        plant(root, {"s/open/f=1", "s/closed/f=1"});
        QCOMPARE(chmod("s/open", 0755) + chmod("s/closed", 0750) + chmod("s/open/f", 0644), 0);
        for (const mode_t mask : {077, 0}) {
            const mode_t before = umask(mask);
            const bool copied = operating.copyDirectoryFiles(root + "/s", root + "/t", true);
            umask(before);
            QVERIFY(copied);
            QCOMPARE(modeOf("t/open/f"), 0x0644);
            if (geteuid() == 0 || mask == 0) // a user may keep his own installation to himself
                QCOMPARE(QList<int>({modeOf("t"), modeOf("t/open"), modeOf("t/closed")}),
                    QList<int>({0x0755, 0x0755, 0x0750}));
            QVERIFY(operating.DelDir(root + "/t"));
        }
    }

    void copyOutlivesItsObject()
    {
        plant(root, {"s/d/f=1", "s/e/f=1"});
        auto shortLived = std::make_unique<Operating>();
        for (const char *target : {"/t", "/u"})
            shortLived->copyDirectoryFilesThread(root + "/s", root + target, false);
        shortLived.reset();
        Operating::waitForCopies();
        QCOMPARE(tree(root + "/t"), tree(root + "/s"));
        QCOMPARE(tree(root + "/u"), tree(root + "/s"));
    }

    void everyCopyEndsOnceForTheObjectThatAskedForIt()
    {
        plant(root, {"s/d/f=1"});
        Operating other;
        const QSignalSpy ended(&operating, &Operating::sendSystemCmdResult);
        const QSignalSpy endedForOther(&other, &Operating::sendSystemCmdResult);
        int directoriesBefore = 0;
        connect(
            &operating, &Operating::copyDirectorySuccess, this,
            [&] { directoriesBefore += ended.isEmpty() ? 1 : 0; }, Qt::DirectConnection);
        QVERIFY(operating.copyDirectoryFilesThread(root + "/s", root + "/t", false));
        QVERIFY(operating.copyDirectoryFilesThread(root + "/s", root + "/t", false));
        Operating::waitForCopies();
        QVERIFY(operating.copyDirectoryFiles(root + "/s", root + "/u", false));
        QCOMPARE(ended.count(), 2);
        QCOMPARE(ended[0], QVariantList({true, QString()}));
        QCOMPARE(ended[1].at(0), QVariant(false));
        QCOMPARE(directoriesBefore, 2);
        QVERIFY(endedForOther.isEmpty());
        disconnect(&operating, nullptr, this, nullptr);
    }

    void earlierManifestIsKept()
    {
        plant(root,
            {"s/manifest.txt=VORN\nlib/new\n", "t/manifest.txt=VORN\nlib/old\nlib/new\n",
                "t/manifest.old.txt=older\nVORN\n"});
        const auto install = [this] {
            operating.copyDirectoryFilesThread(root + "/s", root + "/t", true);
            Operating::waitForCopies();
        };
        install();
        QCOMPARE(contentOf("t/manifest.old.txt"), QByteArray("older\nlib/old\n"));
        QCOMPARE(contentOf("t/manifest.txt"), contentOf("s/manifest.txt"));
        QCOMPARE(modeOf("t/manifest.old.txt"), 0x0644);
        install();
        QCOMPARE(contentOf("t/manifest.old.txt"), QByteArray("older\nlib/old\n"));
        plant(root, {"s/manifest.txt=VORN\nlib/new\nlib/old\nolder\n"});
        install();
        QVERIFY(!QFile::exists("t/manifest.old.txt"));
    }

    void removes_data()
    {
        const Rows<Removal> row;
        row("nothing there", {{"k=1"}, "none", Succeeds, {"k=1"}});
        row("a file", {{"k=1"}, "k", Succeeds, {"k=1"}});
        row("with its emptied parents",
            {{"k=1", "p/q/r/f=1", "p/q/g=1"}, "p/q", Succeeds, {"k=1"}});
        row("a hidden entry stays", {{"p/.h=1", "p/f=1"}, "p", Fails, {"p/", "p/.h=1"}});
        row("a link and a pipe", {{"o/f=1", "p/l->../o", "p/a|"}, "p", Succeeds, {"o/", "o/f=1"}});
        row("the path is a link", {{"o/f=1", "p->o"}, "p/", Succeeds, {"o/", "o/f=1"}});
    }

    void removes()
    {
        const auto [planted, path, result, found] = Rows<Removal>::fetch();
        plant(root, planted);
        QCOMPARE(operating.DelDir(root + '/' + path), result == Succeeds);
        QCOMPARE(tree(root), found);
        QVERIFY(!operating.DelDir(QString()));
    }

    void creates_data()
    {
        const Rows<Creation> row;
        row("in new directories", {{}, "a/b/f.txt", true, Succeeds, {"a/", "a/b/", "a/b/f.txt="}});
        row("no dot: only directories", {{}, "a/b", true, Succeeds, {"a/", "a/b/"}});
        row("an old file is kept", {{"f.txt=old"}, "f.txt", false, Succeeds, {"f.txt=old"}});
        row("the file is a directory", {{"d.d/"}, "d.d", false, Fails, {"d.d/"}});
    }

    void creates()
    {
        const auto [planted, path, isOverwriting, result, found] = Rows<Creation>::fetch();
        plant(root, planted);
        QCOMPARE(operating.createfile(path, isOverwriting), result == Succeeds);
        QCOMPARE(tree(root), found);
        QCOMPARE(operating.ishavefile("f.txt"), found.contains("f.txt=old")); // not when empty
    }

    void linksOfOthersAreNotCreatedThrough()
    {
        if (!OtherUser::exists())
            QSKIP("only root can be somebody else");
        plant(root, {"e/x/f=1", "d->e", "f.txt->e/g"});
        QVERIFY(OtherUser::owns("d") && OtherUser::owns("f.txt"));
        QVERIFY(!operating.createfile("d/n/f.txt", true) && !operating.createfile("f.txt", true));
        QVERIFY(!operating.DelDir(root + "/d/x"));
        QCOMPARE(tree(root), QStringList({"d->e", "e/", "e/x/", "e/x/f=1", "f.txt->g"}));
    }

    void launchersStartTheInstalledPrograms_data()
    {
        const Rows<Launcher> row;
        row("into an empty directory", {{}, false, Succeeds});
        row("over his link and his pipe",
            {{"VornRun.sh->e/f", "UninstallRun.sh|"}, true, Succeeds});
        row("not over directories", {{"VornRun.sh/", "UninstallRun.sh/"}, false, Fails});
    }

    void launchersStartTheInstalledPrograms()
    {
        const auto [planted, isHisDirectory, result] = Rows<Launcher>::fetch();
        if (isHisDirectory && !OtherUser::exists())
            QSKIP("only root can be somebody else");
        const QStringList launchers{"VornRun.sh", "UninstallRun.sh"};
        plant(root, planted + QStringList("e/f=kept"));
        for (const QString &path : launchers + QStringList("."))
            QVERIFY(!isHisDirectory || OtherUser::owns(path));
        QCOMPARE(chmod("e/f", 0600), 0);
        DataManager::getInstance()->setInstallPath("/home/Jörg/中");
        const QString common = "#!/bin/sh\npkexec env DISPLAY=$DISPLAY XAUTHORITY=$XAUTHORITY "
                               "LD_LIBRARY_PATH=/home/Jörg/中/lib  "
                               "QT_QPA_PLATFORM_PLUGIN_PATH=/home/Jörg/中/plugins  "
                               "QML2_IMPORT_PATH=/home/Jörg/中/qml  /home/Jörg/中/";
        const QList<bool> written{
            operating.creatVornRunShell(), operating.creatUninstallRunShell()};
        QCOMPARE(written, QList<bool>({result == Succeeds, result == Succeeds}));
        if (result == Fails)
            return;
        QCOMPARE(tree(root),
            QStringList({"UninstallRun.sh=" + common + "Uninstall\n",
                "VornRun.sh=" + common + "VORN\n", "e/", "e/f=kept"}));
        for (const QString &launcher : launchers) {
            QCOMPARE(modeOf(launcher), 0x0777);
            QCOMPARE(QFileInfo(launcher).ownerId(), geteuid());
        }
        QCOMPARE(modeOf("e/f"), 0x0600);
    }

    void launchersOfOthersAreOverwrittenWhereNoFileCanBeMade()
    {
        if (!OtherUser::exists())
            QSKIP("only root can be somebody else");
        plant(root, {"VornRun.sh=an old and longer text"});
        QCOMPARE(chmod(".", 0755) + chmod("VornRun.sh", 0777), 0);
        const OtherUser::Rights rights;
        QVERIFY(operating.creatVornRunShell() && !operating.creatUninstallRunShell());
        QVERIFY(contentOf("VornRun.sh").endsWith("/VORN\n"));
    }
};

QTEST_MAIN(TestOperatingFiles)
#include "tst_operating_files.moc"
