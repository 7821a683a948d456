#include "installer/Operating.h"
#include "settings/DataManager.h"

#include <QDirIterator>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

// What is planted below a new directory, what is asked there, and what is there afterwards.
struct Case {
    const char *name;
    QStringList planted;
    QString path;
    bool flag; // cover or overwrite
    int outcome; // of a copy: the number of signals n, or -1 - n when it fails
    QStringList expected;
};
Q_DECLARE_METATYPE(Case)

namespace {

// Entries are written "directory/", "file=content" and "link->target".
void plant(const QString &root, const QStringList &entries)
{
    for (const QString &entry : entries) {
        const QString name = entry.section(QRegularExpression("=|->"), 0, 0);
        const QString path = root + '/' + name;
        QVERIFY(QDir().mkpath(entry.endsWith('/') ? path : QFileInfo(path).path()));
        if (entry.contains("->")) {
            QVERIFY(QFile::link(entry.section("->", 1), path));
        } else if (entry.contains('=')) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(entry.section('=', 1).toUtf8());
        }
    }
}

QStringList tree(const QString &root)
{
    QStringList entries;
    QDirIterator walk(root, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
        QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString name = QDir(root).relativeFilePath(walk.next());
        QFile file(walk.filePath());
        if (walk.fileInfo().isSymLink()) {
            entries.append(name + "->" + file.symLinkTarget().section('/', -1));
        } else if (walk.fileInfo().isDir()) {
            entries.append(name + '/');
        } else {
            entries.append(
                name + '=' + (file.open(QIODevice::ReadOnly) ? QString(file.readAll()) : "?"));
        }
    }
    entries.sort();
    return entries;
}

void addRows(std::initializer_list<Case> rows)
{
    QTest::addColumn<Case>("row");
    for (const Case &row : rows) {
        QTest::newRow(row.name) << row;
    }
}

} // namespace

class TestOperatingFiles : public QObject {
    Q_OBJECT

private slots:
    void init();
    void copiesATree_data();
    void copiesATree();
    void copyOutlivesItsObject();
    void removesADirectory_data();
    void removesADirectory();
    void createsAFile_data();
    void createsAFile();
    void emptyFileCountsAsAbsent();
    void launchersStartTheInstalledPrograms();

private:
    std::unique_ptr<QTemporaryDir> dir;
    QString root;
    Operating operating;
};

void TestOperatingFiles::init()
{
    dir = std::make_unique<QTemporaryDir>();
    root = QFileInfo(dir->path()).canonicalFilePath();
    QVERIFY(QDir::setCurrent(root));
}

void TestOperatingFiles::copiesATree_data()
{
    addRows({
        {"three nested directories", {"s/a/b/f=1", "s/g=2"}, "t", false, 3,
            {"a/", "a/b/", "a/b/f=1", "g=2"}},
        {"hidden entries stay behind", {"s/.f=1", "s/.d/f=1", "s/f=2"}, "t", true, 1, {"f=2"}},
        {"links become copies", {"s/d/f=1", "s/e->d", "s/g->d/f", "s/x->none"}, "t", true, 3,
            {"d/", "d/f=1", "e/", "e/f=1", "g=1"}},
        {"an existing file is replaced", {"s/f=1", "t/f=old", "t/g=2"}, "t", true, 1,
            {"f=1", "g=2"}},
        {"an existing file stops the copy", {"s/a=1", "s/b=2", "s/c=3", "t/b=old"}, "t", false, -1,
            {"a=1", "b=old"}},
        {"a directory in its place", {"s/f=1", "t/f/"}, "t", true, -1, {"f/"}},
        {"a dangling link in its place", {"s/f=1", "t/f->none"}, "t", true, 1, {"f=1"}},
        {"a failure below", {"s/a/f=1", "s/b/f=2", "s/c=3", "t/b/f/"}, "t", true, -2,
            {"a/", "a/f=1", "b/", "b/f/"}},
        {"the parent is missing", {"s/f=1"}, "none/t", true, -1, {}},
        {"the parent is a file", {"s/f=1"}, "s/f/t", true, -1, {}},
        {"the source itself", {"s/f=1", "s/d/g=2"}, "s", true, 1, {"d/", "d/g=2", "f=1"}},
        {"the source by another way", {"s/f=1"}, "s/../s/", true, 1, {"f=1"}},
        {"the source behind a link", {"s/f=1", "t->s"}, "t", true, 1, {"f=1"}},
        {"a part is its own target", {"s/d/f=1", "t/d->../s/d"}, "t", true, 2, {"d->d"}},
        {"a target inside the source", {"s/d/f=1", "s/g=2"}, "s/d/t", true, 2,
            {"d/", "d/f=1", "g=2"}},
        {"a link to a parent directory", {"s/d/f=1", "s/d/up->..", "s/top->.."}, "t", true, 3,
            {"d/", "d/f=1", "top/"}},
        {"links into each other", {"s/a/b->../b", "s/b/a->../a"}, "t", true, 5,
            {"a/", "a/b/", "b/", "b/a/"}},
    });
}

void TestOperatingFiles::copiesATree()
{
    QFETCH(Case, row);
    plant(root, row.planted);
    const QSignalSpy spy(&operating, &Operating::copyDirectorySuccess);
    const bool copied = operating.copyDirectoryFiles(root + "/s", root + '/' + row.path, row.flag);
    QCOMPARE(copied ? spy.count() : -1 - spy.count(), row.outcome);
    QCOMPARE(tree(root + '/' + row.path), row.expected);
}

void TestOperatingFiles::copyOutlivesItsObject()
{
    for (int i = 0; i < 60; ++i) {
        plant(root, {QString("s/d%1/f=1").arg(i), QString("s/d%1/g=2").arg(i)});
    }
    auto shortLived = std::make_unique<Operating>();
    QEventLoop loop;
    connect(shortLived.get(), &Operating::copyDirectorySuccess, &loop, &QEventLoop::quit);
    shortLived->copyDirectoryFilesThread(root + "/s", root + "/t", false);
    shortLived->copyDirectoryFilesThread(root + "/s", root + "/u", false);
    loop.exec();
    shortLived.reset();
    Operating::waitForCopies();
    QCOMPARE(tree(root + "/t"), tree(root + "/s"));
    QCOMPARE(tree(root + "/u"), tree(root + "/s"));
}

void TestOperatingFiles::removesADirectory_data()
{
    addRows({
        {"nothing there", {"k=1"}, "none", false, 1, {"k=1"}},
        {"a file", {"k=1"}, "k", false, 1, {"k=1"}},
        {"with its emptied parents", {"k=1", "p/q/r/f=1", "p/q/g=1"}, "p/q", false, 1, {"k=1"}},
        {"only subdirectories", {"k=1", "p/q/r/", "p/q/s/"}, "p", false, 1, {"k=1"}},
        {"a hidden entry stays", {"p/.h=1", "p/f=1"}, "p", false, 0, {"p/", "p/.h=1"}},
        {"a link to a directory", {"o/f=1", "p/l->../o"}, "p", false, 1, {"o/", "o/f=1"}},
        {"the path is a link", {"o/f=1", "p->o"}, "p/", false, 1, {"o/", "o/f=1"}},
        {"a link whose target goes first", {"k=1", "p/a/f=1", "p/b->a/f"}, "p", false, 1, {"k=1"}},
    });
}

void TestOperatingFiles::removesADirectory()
{
    QFETCH(Case, row);
    plant(root, row.planted);
    QVERIFY(!operating.DelDir(QString()));
    QCOMPARE(operating.DelDir(root + '/' + row.path), row.outcome != 0);
    QCOMPARE(tree(root), row.expected);
}

void TestOperatingFiles::createsAFile_data()
{
    addRows({
        {"in the working directory", {}, "f.txt", false, 1, {"f.txt="}},
        {"in new directories", {}, "a/b/f.txt", true, 1, {"a/", "a/b/", "a/b/f.txt="}},
        {"no dot: only directories", {}, "a/b", true, 1, {"a/", "a/b/"}},
        {"a dot in the directory", {}, "a.d/b", true, 1, {"a.d/", "a.d/b="}},
        {"an old file is kept", {"f.txt=old"}, "f.txt", false, 1, {"f.txt=old"}},
        {"an old file is emptied", {"f.txt=old"}, "f.txt", true, 1, {"f.txt="}},
        {"the directory is a file", {"f=1"}, "f/g.txt", true, 0, {"f=1"}},
        {"the file is a directory", {"d.d/"}, "d.d", false, 0, {"d.d/"}},
        {"a directory cannot be overwritten", {"d.d/"}, "d.d", true, 0, {"d.d/"}},
    });
}

void TestOperatingFiles::createsAFile()
{
    QFETCH(Case, row);
    plant(root, row.planted);
    QCOMPARE(operating.createfile(row.path, row.flag), row.outcome != 0);
    QCOMPARE(tree(root), row.expected);
}

void TestOperatingFiles::emptyFileCountsAsAbsent()
{
    plant(root, {"empty=", "full=1", "d/"});
    QVERIFY(!operating.ishavefile("empty"));
    QVERIFY(!operating.ishavefile("none"));
    QVERIFY(operating.ishavefile("full"));
    QCOMPARE(operating.ishavefile("d"), QFileInfo("d").size() > 0);
}

void TestOperatingFiles::launchersStartTheInstalledPrograms()
{
    DataManager::getInstance()->setInstallPath("/home/Jörg/中");
    const QString common = "#!/bin/sh\npkexec env DISPLAY=$DISPLAY XAUTHORITY=$XAUTHORITY "
                           "LD_LIBRARY_PATH=/home/Jörg/中/lib  "
                           "QT_QPA_PLATFORM_PLUGIN_PATH=/home/Jörg/中/plugins  "
                           "QML2_IMPORT_PATH=/home/Jörg/中/qml  /home/Jörg/中/";
    QVERIFY(operating.creatVornRunShell());
    QVERIFY(operating.creatUninstallRunShell());
    QCOMPARE(tree(root),
        QStringList(
            {"UninstallRun.sh=" + common + "Uninstall\n", "VornRun.sh=" + common + "VORN\n"}));
    QCOMPARE(int(QFile::permissions("VornRun.sh")) & 0x0777, 0x0777);
    QCOMPARE(int(QFile::permissions("UninstallRun.sh")) & 0x0777, 0x0777);

    QVERIFY(QFile::remove("VornRun.sh"));
    plant(root, {"VornRun.sh/"});
    QVERIFY(!operating.creatVornRunShell());
}

QTEST_MAIN(TestOperatingFiles)
#include "tst_operating_files.moc"
