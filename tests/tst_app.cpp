#include "ClosedWindows.h"
#include "Support.h"
#include "app/LogHandlers.h"
#include "app/PXLog.h"
#include "app/PXMainWindows.h"
#include "app/StartUp.h"
#include "base/Deployment.h"
#include "base/ExecutableDirectory.h"
#include "base/FirstFrame.h"

#include <QNetworkAccessManager>
#include <QNetworkDiskCache>
#include <QQmlEngine>
#include <QQmlNetworkAccessManagerFactory>
#include <QQuickItem>

#include <thread>

class AppTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_directory;

private slots:
    void initTestCase()
    {
        QVERIFY(!isDebug && !openAllprint); // as delivered
        QVERIFY(QDir::setCurrent(m_directory.path()));
        useSoftwareSceneGraph();
        setUpFonts();
        Deployment::current() = Deployment();
        registerQmlTypes();
    }

    void cleanupTestCase() { QVERIFY(freeClosedWindows()); }
    void cleanup() { isDebug = openAllprint = false; }

    void fileHandlerKeepsTheRightMessages_data()
    {
        // Type, isDebug, openAllprint, what is written; %1 stands for the record.
        const Table<int, bool, bool, QString> row;
        row("warnings are errors", 1, false, false, R"(\[Error\]%1)");
        row("critical, filed nowhere", 2, false, false, R"(\(not there\))");
        row("everything: critical", 2, false, true, R"(\[Critical\]%1)");
        row("everything: info", 4, false, true, R"(\[Info\]%1)");
        row("a debug line loses its text", 0, false, true, R"(\r\n)");
        row("a debug build keeps it", 0, true, true, R"(\[Debug\]%1)");
        row("an unknown level has no tag", 99, false, true, "%1");
    }

    void fileHandlerKeepsTheRightMessages()
    {
        auto [type, debug, everything, expected] = Table<int, bool, bool, QString>::fetch();
        isDebug = debug;
        openAllprint = everything;

        const QString path = executableDirectory() + (openAllprint ? "/log.txt" : "/errorlog.txt");
        QFile::remove(path);
        kqMessageOutput(QtMsgType(type), {"a.cpp", 7, "f", nullptr}, "50 %4 %1");
        const QString content = QString::fromUtf8(contentOf(path));
        QFile::remove(path);
        expected.replace("%1",
            QString(R"(\[\d{4}(-\d\d){2} \d\d(:\d\d){2}\])"
                    R"(\[Line:7\]\[Function:f\]\[msg:50 %4 %1\]\r\n\r\n)"));
        const QRegularExpression pattern(QRegularExpression::anchoredPattern(expected));
        QVERIFY2(pattern.match(content).hasMatch(), qPrintable(content));
    }

    void singletonLogsIntoTheWorkingDirectory()
    {
        PXLog *log = PXLog::getInstance();
        QCOMPARE(PXLog::getInstance(), log);
        log->qDebugInfo(1, QStringLiteral("x"));
        std::thread([] { qInfo("from a thread"); }).join();
        qInstallMessageHandler(nullptr);

        const QString content = QString::fromUtf8(contentOf(QStringLiteral("log.txt")));
        const QRegularExpression expected(QRegularExpression::anchoredPattern(QStringLiteral(
            R"(Warning: File:\(\) Line:\(0\) x \(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d \S+\)\r\n.* from a thread \(.*\)\r\n)")));
        QVERIFY2(expected.match(content).hasMatch(), qPrintable(content));
    }

    void handlersSurviveAFileThatCannotBeOpened()
    {
        QVERIFY(QFile::remove(QStringLiteral("log.txt")));
        QVERIFY(QDir().mkdir(QStringLiteral("log.txt"))); // a directory of that name
        qInstallMessageHandler(outputMessage);
        qWarning("lost, and no dead lock");
        qInstallMessageHandler(nullptr);
        QVERIFY(QDir().rmdir(QStringLiteral("log.txt")));
    }

    void windowDoesWhatTheSceneAsksFor()
    {
        PXMainWindows window;
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(window.flags(), Qt::WindowFlags(Qt::FramelessWindowHint));
        QCOMPARE(window.color(), QColor(Qt::transparent));
        QCOMPARE(window.size(), QSize(640, 520));

        QVERIFY(QMetaObject::invokeMethod(window.rootObject(), "hideWindows"));
        QVERIFY(!window.isVisible());
        window.onShowWindows();
        QVERIFY(window.isVisible());
        QMetaObject::invokeMethod(window.rootObject(), "closeWindows", Qt::QueuedConnection);
        QCOMPARE(QCoreApplication::exec(), 0);
    }

    void windowGoneBeforeItsFirstFrameHoldsNothingUp()
    {
        PXMainWindows().setTitle({});
        bool done = false;
        FirstFrame::then(this, [&done] { done = true; });
        QTRY_VERIFY(done);
    }

    void engineGetsACacheInTheWorkingDirectory()
    {
        PXMainWindows window;
        QObject parent;
        auto *manager = window.engine()->networkAccessManagerFactory()->create(&parent);
        QCOMPARE(manager->parent(), &parent);
        auto *cache = qobject_cast<QNetworkDiskCache *>(manager->cache());
        QVERIFY(cache);
        const QDir cached(cache->cacheDirectory());
        QCOMPARE(cached.dirName(), QStandardPaths::displayName(QStandardPaths::CacheLocation));
        QCOMPARE(QFileInfo(cached.absolutePath()).path(), QDir::currentPath());
        QCOMPARE(cache->maximumCacheSize(), qint64(104857600));
    }
};

QTEST_MAIN(AppTest)
#include "tst_app.moc"
