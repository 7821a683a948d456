#include "Manual.h"
#include "OtherUser.h"
#include "installer/Operating.h"
#include "settings/DataManager.h"

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>

namespace {

const char manual[] = "files.md";

// Plants, below a directory, what the entries say in the words of the manual.
void plant(const QString &root, const QStringList &entries)
{
    for (QString entry : entries) {
        const bool isPipe = entry.startsWith("pipe:");
        entry.remove(QRegularExpression("^pipe:"));
        const QString name = entry.section(QRegularExpression("=>?|->"), 0, 0);
        const QString path = root + '/' + name;
        const QByteArray bytes = QByteArray::fromPercentEncoding(path.toUtf8());
        QVERIFY(QDir().mkpath(entry.endsWith('/') ? path : QFileInfo(path).path()));
        if (entry.contains('>'))
            QVERIFY(QFile::link(entry.section('>', 1), path));
        if (entry.contains("=>"))
            QVERIFY(OtherUser::owns(path));
        else if (isPipe)
            QCOMPARE(mkfifo(bytes.constData(), 0600), 0);
        else if (entry.contains('=')) {
            QFile file(path);
            const int handle = creat(bytes.constData(), 0644);
            QVERIFY(file.open(handle, QIODevice::WriteOnly, QFile::AutoCloseHandle)
                && file.write(entry.section('=', 1).toUtf8()) >= 0);
        }
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
                                    : QString("pipe:" + name);
    }
    entries.sort();
    return entries;
}

void rowsOf(const QString &heading)
{
    const Rows<QStringList> row;
    for (const QStringList &cells : tableBelow(heading, manual))
        row(qPrintable(cells[0].trimmed()), cells);
}

bool isYes(const QString &cell) { return cell.trimmed() == "yes"; }

int modeOf(const QString &path) { return int(QFile::permissions(path)) & 0x0777; }

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

    void copiesATree_data() { rowsOf("## Copying a tree"); }

    void copiesATree()
    {
        const QStringList cells = Rows<QStringList>::fetch();
        plant(root, codeIn(cells[1]));
        const QStringList source = tree(root + "/s");
        const QSignalSpy done(&operating, &Operating::copyDirectorySuccess);
        const QString target = root + '/' + codeIn(cells[2]).value(0);
        const bool isReplacing = cells[3].trimmed() == "replaced";
        QCOMPARE(operating.copyDirectoryFiles(root + "/s", target, isReplacing), isYes(cells[4]));
        QCOMPARE(done.count(), cells[5].toInt());
        QCOMPARE(tree(target), codeIn(cells[6]));
        for (const QString &entry : source)
            QVERIFY(tree(root + "/s").contains(entry));
    }

    void tellsWhyItFailed_data() { rowsOf("## Why a copy failed"); }

    void tellsWhyItFailed()
    {
        const QStringList cells = Rows<QStringList>::fetch();
        if (cells[1].contains("=>") && !OtherUser::exists())
            QSKIP("only root can be somebody else");
        plant(root, codeIn(cells[1]));
        const QSignalSpy ended(&operating, &Operating::sendSystemCmdResult);
        operating.copyDirectoryFilesThread("s", codeIn(cells[2]).value(0), true);
        Operating::waitForCopies();
        QCOMPARE(ended.count(), 1);
        const QString message = codeIn(cells[3]).value(0).replace("ROOT", root);
        QCOMPARE(ended[0], QVariantList({false, message}));
        QCOMPARE(tree(root).filter(QRegularExpression("^(?!s/|pipe:s/)")), codeIn(cells[4]));
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

    void removes_data() { rowsOf("## Removing"); }

    void removes()
    {
        const QStringList cells = Rows<QStringList>::fetch();
        plant(root, codeIn(cells[1]));
        QCOMPARE(operating.DelDir(root + '/' + codeIn(cells[2]).value(0)), isYes(cells[3]));
        QCOMPARE(tree(root), codeIn(cells[4]));
        QVERIFY(!operating.DelDir(QString()));
    }

    void creates_data() { rowsOf("## Creating"); }

    void creates()
    {
        const QStringList cells = Rows<QStringList>::fetch();
        plant(root, codeIn(cells[1]));
        const bool isOverwriting = cells[3].trimmed() == "emptied";
        QCOMPARE(operating.createfile(codeIn(cells[2]).value(0), isOverwriting), isYes(cells[4]));
        QCOMPARE(tree(root), codeIn(cells[5]));
        QCOMPARE(operating.ishavefile("f.txt"), tree(root).contains("f.txt=old")); // not when empty
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

    void launchersStartTheInstalledPrograms()
    {
        const QStringList launchers{"VornRun.sh", "UninstallRun.sh"};
        plant(root, {"e/f=kept"});
        if (OtherUser::exists()) { // his link and his pipe give way
            plant(root, {"VornRun.sh->e/f", "pipe:UninstallRun.sh"});
            for (const QString &path : launchers + QStringList("."))
                QVERIFY(OtherUser::owns(path));
        }
        QCOMPARE(chmod("e/f", 0600), 0);
        DataManager::getInstance()->setInstallPath("/home/Jörg/中");
        const QString common = "#!/bin/sh\npkexec env DISPLAY=$DISPLAY XAUTHORITY=$XAUTHORITY "
                               "LD_LIBRARY_PATH=/home/Jörg/中/lib  "
                               "QT_QPA_PLATFORM_PLUGIN_PATH=/home/Jörg/中/plugins  "
                               "QML2_IMPORT_PATH=/home/Jörg/中/qml  /home/Jörg/中/";
        QVERIFY(operating.creatVornRunShell() && operating.creatUninstallRunShell());
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
