#include "Support.h"
#include "installer/Operating.h"
#include "settings/DataManager.h"

namespace {

// What is planted below a new directory, as "directory/", "file=content" or "link->target"; what is
// asked there; whether files are covered; the result; and what is there afterwards.
using Case = Table<QStringList, QString, bool, int, QStringList>;

void plant(const QString &root, const QStringList &entries)
{
    for (const QString &entry : entries) {
        const QString path = root + '/' + entry.section(QRegularExpression("=|->"), 0, 0);
        QVERIFY(QDir().mkpath(entry.endsWith('/') ? path : QFileInfo(path).path()));
        if (entry.contains("->"))
            QVERIFY(QFile::link(entry.section("->", 1), path));
        else if (entry.contains('='))
            QVERIFY(put(path, entry.section('=', 1).toUtf8()));
    }
}

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
                                    : QString(name + '=' + contentOf(info.filePath()));
    }
    entries.sort();
    return entries;
}

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
        // clang-format off
        const Case row; // the result is the number of signals n, or -1 - n of a copy that fails
        row("three nested directories", {"s/a/b/f=1", "s/g=2"}, "t", false, 3, {"a/", "a/b/", "a/b/f=1", "g=2"});
        row("hidden entries stay behind", {"s/.f=1", "s/.d/f=1", "s/f=2"}, "t", true, 1, {"f=2"});
        row("links become copies", {"s/d/f=1", "s/e->d", "s/g->d/f", "s/x->none"}, "t", true, 3, {"d/", "d/f=1", "e/", "e/f=1", "g=1"});
        row("an existing file is replaced", {"s/f=1", "t/f=old", "t/g=2"}, "t", true, 1, {"f=1", "g=2"});
        row("an existing file stops the copy", {"s/a=1", "s/b=2", "s/c=3", "t/b=old"}, "t", false, -1, {"a=1", "b=old"});
        row("a directory in its place", {"s/f=1", "t/f/"}, "t", true, -1, {"f/"});
        row("a dangling link in its place", {"s/f=1", "t/f->none"}, "t", true, 1, {"f=1"});
        row("a failure below", {"s/a/f=1", "s/b/f=2", "s/c=3", "t/b/f/"}, "t", true, -2, {"a/", "a/f=1", "b/", "b/f/"});
        row("the parent is missing", {"s/f=1"}, "none/t", true, -1, {});
        row("the parent is a file", {"s/f=1"}, "s/f/t", true, -1, {});
        row("the source itself", {"s/f=1", "s/d/g=2"}, "s", true, 1, {"d/", "d/g=2", "f=1"});
        row("the source by another way", {"s/f=1"}, "s/../s/", true, 1, {"f=1"});
        row("the source behind a link", {"s/f=1", "t->s"}, "t", true, 1, {"f=1"});
        row("a part is its own target", {"s/d/f=1", "t/d->../s/d"}, "t", true, 2, {"d->d"});
        row("a target inside the source", {"s/d/f=1", "s/g=2"}, "s/d/t", true, 2, {"d/", "d/f=1", "g=2"});
        row("a link to a parent directory", {"s/d/f=1", "s/d/up->..", "s/top->.."}, "t", true, 3, {"d/", "d/f=1", "top/"});
        row("links into each other", {"s/a/b->../b", "s/b/a->../a"}, "t", true, 5, {"a/", "a/b/", "b/", "b/a/"});
        // clang-format on
    }

    void copiesATree()
    {
        const auto [planted, path, isCovering, outcome, expected] = Case::fetch();
        plant(root, planted);
        const QSignalSpy spy(&operating, &Operating::copyDirectorySuccess);
        const QString target = root + '/' + path;
        const bool copied = operating.copyDirectoryFiles(root + "/s", target, isCovering);
        QCOMPARE(copied ? spy.count() : -1 - spy.count(), outcome);
        QCOMPARE(tree(target), expected);
    }

    void copyOutlivesItsObject()
    {
        for (int i = 0; i < 60; ++i)
            plant(root, {QString("s/d%1/f=1").arg(i), QString("s/d%1/g=2").arg(i)});
        auto shortLived = std::make_unique<Operating>();
        QSignalSpy copied(shortLived.get(), &Operating::copyDirectorySuccess);
        shortLived->copyDirectoryFilesThread(root + "/s", root + "/t", false);
        shortLived->copyDirectoryFilesThread(root + "/s", root + "/u", false);
        QVERIFY(copied.wait());
        shortLived.reset();
        Operating::waitForCopies();
        QCOMPARE(tree(root + "/t"), tree(root + "/s"));
        QCOMPARE(tree(root + "/u"), tree(root + "/s"));
    }

    void removesOrCreates_data()
    {
        // clang-format off
        const Case row; // the result is true or false
        row("remove: nothing there", {"k=1"}, "none", false, 1, {"k=1"});
        row("remove: a file", {"k=1"}, "k", false, 1, {"k=1"});
        row("remove: with its emptied parents", {"k=1", "p/q/r/f=1", "p/q/g=1"}, "p/q", false, 1, {"k=1"});
        row("remove: only subdirectories", {"k=1", "p/q/r/", "p/q/s/"}, "p", false, 1, {"k=1"});
        row("remove: a hidden entry stays", {"p/.h=1", "p/f=1"}, "p", false, 0, {"p/", "p/.h=1"});
        row("remove: a link to a directory", {"o/f=1", "p/l->../o"}, "p", false, 1, {"o/", "o/f=1"});
        row("remove: the path is a link", {"o/f=1", "p->o"}, "p/", false, 1, {"o/", "o/f=1"});
        row("remove: a link whose target goes first", {"k=1", "p/a/f=1", "p/b->a/f"}, "p", false, 1, {"k=1"});
        row("in the working directory", {}, "f.txt", false, 1, {"f.txt="});
        row("in new directories", {}, "a/b/f.txt", true, 1, {"a/", "a/b/", "a/b/f.txt="});
        row("no dot: only directories", {}, "a/b", true, 1, {"a/", "a/b/"});
        row("a dot in the directory", {}, "a.d/b", true, 1, {"a.d/", "a.d/b="});
        row("an old file is kept", {"f.txt=old"}, "f.txt", false, 1, {"f.txt=old"});
        row("an old file is emptied", {"f.txt=old"}, "f.txt", true, 1, {"f.txt="});
        row("the directory is a file", {"f=1"}, "f/g.txt", true, 0, {"f=1"});
        row("the file is a directory", {"d.d/"}, "d.d", false, 0, {"d.d/"});
        row("a directory cannot be overwritten", {"d.d/"}, "d.d", true, 0, {"d.d/"});
        // clang-format on
    }

    void removesOrCreates()
    {
        const auto [planted, path, isCovering, outcome, expected] = Case::fetch();
        plant(root, planted);
        const bool isRemoval = QByteArray(QTest::currentDataTag()).startsWith("remove");
        QCOMPARE(int(isRemoval ? operating.DelDir(root + '/' + path)
                               : operating.createfile(path, isCovering)),
            outcome);
        QCOMPARE(tree(root), expected);
        QVERIFY(!operating.DelDir(QString()));
        QCOMPARE(operating.ishavefile("f.txt"), expected.contains("f.txt=old")); // not when empty
    }

    void launchersStartTheInstalledPrograms()
    {
        DataManager::getInstance()->setInstallPath("/home/Jörg/中");
        const QString common = "#!/bin/sh\npkexec env DISPLAY=$DISPLAY XAUTHORITY=$XAUTHORITY "
                               "LD_LIBRARY_PATH=/home/Jörg/中/lib  "
                               "QT_QPA_PLATFORM_PLUGIN_PATH=/home/Jörg/中/plugins  "
                               "QML2_IMPORT_PATH=/home/Jörg/中/qml  /home/Jörg/中/";
        QVERIFY(operating.creatVornRunShell() && operating.creatUninstallRunShell());
        QCOMPARE(tree(root),
            QStringList(
                {"UninstallRun.sh=" + common + "Uninstall\n", "VornRun.sh=" + common + "VORN\n"}));
        for (const char *launcher : {"VornRun.sh", "UninstallRun.sh"})
            QCOMPARE(int(QFile::permissions(launcher)) & 0x0777, 0x0777);
        QVERIFY(QFile::remove("VornRun.sh"));
        plant(root, {"VornRun.sh/"});
        QVERIFY(!operating.creatVornRunShell());
    }
};

QTEST_MAIN(TestOperatingFiles)
#include "tst_operating_files.moc"
