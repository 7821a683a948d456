#include "installer/Operating.h"
#include "settings/DataManager.h"

#include <QDirIterator>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>

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

} // namespace

class TestOperatingFiles : public QObject {
    Q_OBJECT

private slots:
    void init();
    void copiesATree_data();
    void copiesATree();
    void queuedCopiesSignalFromThePool();
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
    QTest::addColumn<QStringList>("planted");
    QTest::addColumn<QString>("target");
    QTest::addColumn<bool>("cover");
    QTest::addColumn<int>("signalCount"); // the copy succeeds when it is not negative
    QTest::addColumn<QStringList>("expected"); // in the target
    const auto row = [](const char *name, const QStringList &planted, const QString &target,
                         bool cover, int signalCount, const QStringList &expected) {
        QTest::newRow(name) << planted << target << cover << signalCount << expected;
    };
    row("three nested directories", {"s/a/b/f=1", "s/g=2"}, "t", false, 3,
        {"a/", "a/b/", "a/b/f=1", "g=2"});
    row("hidden entries stay behind", {"s/.f=1", "s/.d/f=1", "s/f=2"}, "t", true, 1, {"f=2"});
    row("a link is copied as what it leads to", {"s/d/f=1", "s/e->d", "s/g->d/f", "s/x->none"}, "t",
        true, 3, {"d/", "d/f=1", "e/", "e/f=1", "g=1"});
    row("an existing file is replaced", {"s/f=1", "t/f=old", "t/g=2"}, "t", true, 1,
        {"f=1", "g=2"});
    row("an existing file stops the copy", {"s/a=1", "s/b=2", "s/c=3", "t/b=old"}, "t", false, -1,
        {"a=1", "b=old"});
    row("a directory in the place of a file", {"s/f=1", "t/f/"}, "t", true, -1, {"f/"});
    row("a dangling link in the place of a file", {"s/f=1", "t/f->none"}, "t", true, 1, {"f=1"});
    row("a failure below stops what is above", {"s/a/f=1", "s/b/f=2", "s/c=3", "t/b/f/"}, "t", true,
        -2, {"a/", "a/f=1", "b/", "b/f/"});
    row("the parent of the target is missing", {"s/f=1"}, "none/t", true, -1, {});
    row("the parent of the target is a file", {"s/f=1"}, "s/f/t", true, -1, {});
    row("the source itself", {"s/f=1", "s/d/g=2"}, "s", true, 1, {"d/", "d/g=2", "f=1"});
    row("the source by another way", {"s/f=1"}, "s/../s/", true, 1, {"f=1"});
    row("the source behind a link", {"s/f=1", "t->s"}, "t", true, 1, {"f=1"});
    row("a subdirectory that is its own target", {"s/d/f=1", "t/d->../s/d"}, "t", true, 2,
        {"d->d"});
    row("a target inside the source", {"s/d/f=1", "s/g=2"}, "s/d/t", true, 2,
        {"d/", "d/f=1", "g=2"});
    row("a link to a parent directory", {"s/d/f=1", "s/d/up->..", "s/top->.."}, "t", true, 3,
        {"d/", "d/f=1", "top/"});
    row("links that lead into each other", {"s/a/b->../b", "s/b/a->../a"}, "t", true, 5,
        {"a/", "a/b/", "b/", "b/a/"});
}

void TestOperatingFiles::copiesATree()
{
    QFETCH(QStringList, planted);
    QFETCH(QString, target);
    QFETCH(bool, cover);
    QFETCH(int, signalCount);
    QFETCH(QStringList, expected);
    plant(root, planted);

    const QSignalSpy spy(&operating, &Operating::copyDirectorySuccess);
    QCOMPARE(
        operating.copyDirectoryFiles(root + "/s", root + '/' + target, cover), signalCount >= 0);
    QCOMPARE(spy.count(), signalCount >= 0 ? signalCount : -signalCount - 1);
    QCOMPARE(tree(root + '/' + target), expected);
}

void TestOperatingFiles::queuedCopiesSignalFromThePool()
{
    plant(root, {"s/a/f=1", "s/g=2"});
    std::atomic<int> foreignSignals = 0;
    connect(
        &operating, &Operating::copyDirectorySuccess, this,
        [this, &foreignSignals] { foreignSignals += thread() != QThread::currentThread(); },
        Qt::DirectConnection);
    for (int i = 0; i < 5; ++i) {
        QVERIFY(operating.copyDirectoryFilesThread(root + "/s", root + "/t", true));
    }
    Operating::waitForCopies();
    operating.disconnect(this);
    QCOMPARE(foreignSignals.load(), 10);
    QCOMPARE(tree(root + "/t"), tree(root + "/s"));
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
    QTest::addColumn<QStringList>("planted");
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("result");
    QTest::addColumn<QStringList>("left");
    const auto row = [](const char *name, const QStringList &planted, const QString &path,
                         bool result, const QStringList &left) {
        QTest::newRow(name) << planted << path << result << left;
    };
    row("nothing there", {"k=1"}, "none", true, {"k=1"});
    row("a file", {"k=1"}, "k", true, {"k=1"});
    row("with its emptied parents", {"k=1", "p/q/r/f=1", "p/q/g=1"}, "p/q", true, {"k=1"});
    row("only subdirectories", {"k=1", "p/q/r/", "p/q/s/"}, "p", true, {"k=1"});
    row("a hidden entry stays", {"p/.h=1", "p/f=1"}, "p", false, {"p/", "p/.h=1"});
    row("a link to a directory", {"o/f=1", "p/l->../o"}, "p", true, {"o/", "o/f=1"});
    row("the path is a link", {"o/f=1", "p->o"}, "p/", true, {"o/", "o/f=1"});
    row("a link whose target goes first", {"k=1", "p/a/f=1", "p/b->a/f"}, "p", true, {"k=1"});
}

void TestOperatingFiles::removesADirectory()
{
    QFETCH(QStringList, planted);
    QFETCH(QString, path);
    QFETCH(bool, result);
    plant(root, planted);
    QVERIFY(!operating.DelDir(QString()));
    QCOMPARE(operating.DelDir(root + '/' + path), result);
    QTEST(tree(root), "left");
}

void TestOperatingFiles::createsAFile_data()
{
    QTest::addColumn<QStringList>("planted");
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("overwrite");
    QTest::addColumn<bool>("result");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char *name, const QStringList &planted, const QString &path,
                         bool overwrite, bool result, const QStringList &expected) {
        QTest::newRow(name) << planted << path << overwrite << result << expected;
    };
    row("in the working directory", {}, "f.txt", false, true, {"f.txt="});
    row("in new directories", {}, "a/b/f.txt", true, true, {"a/", "a/b/", "a/b/f.txt="});
    row("no dot: only directories", {}, "a/b", true, true, {"a/", "a/b/"});
    row("a dot in the directory", {}, "a.d/b", true, true, {"a.d/", "a.d/b="});
    row("an old file is kept", {"f.txt=old"}, "f.txt", false, true, {"f.txt=old"});
    row("an old file is emptied", {"f.txt=old"}, "f.txt", true, true, {"f.txt="});
    row("the directory is a file", {"f=1"}, "f/g.txt", true, false, {"f=1"});
    row("the file is a directory", {"d.d/"}, "d.d", false, false, {"d.d/"});
    row("a directory cannot be overwritten", {"d.d/"}, "d.d", true, false, {"d.d/"});
}

void TestOperatingFiles::createsAFile()
{
    QFETCH(QStringList, planted);
    QFETCH(QString, path);
    QFETCH(bool, overwrite);
    QFETCH(bool, result);
    plant(root, planted);
    QCOMPARE(operating.createfile(path, overwrite), result);
    QTEST(tree(root), "expected");
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
