#include "ClosedWindows.h"
#include "Support.h"
#include "app/LogHandlers.h"
#include "app/PXLog.h"
#include "app/PXMainWindows.h"
#include "app/StartUp.h"
#include "app/WindowShape.h"
#include "base/Deployment.h"
#include "base/ExecutableDirectory.h"
#include "base/FirstFrame.h"

#include <QNetworkAccessManager>
#include <QNetworkDiskCache>
#include <QQmlEngine>
#include <QQmlNetworkAccessManagerFactory>
#include <QQuickItem>
#include <QScreen>

#include <thread>

// What a message leaves in the file; %1 stands for the record.
struct Filed {
    int type; // a QtMsgType, or none
    bool debug;
    bool everything;
    QString written;
};

struct Corner {
    QPoint pixel;
    bool drawn;
};

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
        const Rows<Filed> row;
        const bool on = true;
        row("warnings are errors", {QtWarningMsg, !on, !on, R"(\[Error\]%1)"});
        row("critical, filed nowhere", {QtCriticalMsg, !on, !on, R"(\(not there\))"});
        row("everything: info", {QtInfoMsg, !on, on, R"(\[Info\]%1)"});
        row("a debug line loses its text", {QtDebugMsg, !on, on, R"(\r\n)"});
        row("a debug build keeps it", {QtDebugMsg, on, on, R"(\[Debug\]%1)"});
        row("an unknown level has no tag", {99, !on, on, "%1"});
    }

    void fileHandlerKeepsTheRightMessages()
    {
        const auto [type, debug, everything, written] = Rows<Filed>::fetch();
        isDebug = debug;
        openAllprint = everything;

        const QString path = executableDirectory() + (openAllprint ? "/log.txt" : "/errorlog.txt");
        QFile::remove(path);
        kqMessageOutput(QtMsgType(type), {"a.cpp", 7, "f", nullptr}, "50 %4 %1");
        const QString content = QString::fromUtf8(contentOf(path));
        QFile::remove(path);
        const QString record = R"(\[\d{4}(-\d\d){2} \d\d(:\d\d){2}\])"
                               R"(\[Line:7\]\[Function:f\]\[msg:50 %4 %1\]\r\n\r\n)";
        const QRegularExpression pattern(
            QRegularExpression::anchoredPattern(QString(written).replace("%1", record)));
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
        const QRegularExpression expected(QRegularExpression::anchoredPattern(QLatin1String(
            R"(Warning: File:\(\) Line:\(0\) x \(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d \S+\)\r\n)"
            R"(.* from a thread \(.*\)\r\n)")));
        QVERIFY2(expected.match(content).hasMatch(), qPrintable(content));
    }

    void handlersSurviveAFileThatCannotBeOpened()
    {
        QFile::remove("log.txt");
        QVERIFY(QDir().mkdir("log.txt")); // a directory of that name
        qInstallMessageHandler(outputMessage);
        qWarning("lost, and no dead lock");
        qInstallMessageHandler(nullptr);
        QVERIFY(QDir().rmdir("log.txt"));
    }

    void windowDoesWhatTheSceneAsksFor()
    {
        PXMainWindows window;
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(window.flags(), Qt::WindowFlags(Qt::FramelessWindowHint));
        QCOMPARE(window.color(), QColor(Qt::transparent));
        QCOMPARE(window.size(), QSize(640, 520));
        QCOMPARE(window.minimumSize(), window.size());
        QCOMPARE(window.maximumSize(), window.size());
        QCOMPARE(window.title(), QString("VornVPN"));
        QVERIFY(windowIcon().availableSizes().contains({32, 32}));
        QVERIFY(!windowIcon().availableSizes().contains({256, 256}));

        QVERIFY(QMetaObject::invokeMethod(window.rootObject(), "hideWindows"));
        QVERIFY(!window.isVisible());
        window.onShowWindows();
        QVERIFY(window.isVisible());
        QMetaObject::invokeMethod(window.rootObject(), "closeWindows", Qt::QueuedConnection);
        QCOMPARE(QCoreApplication::exec(), 0);
        QVERIFY(!window.isVisible());
    }

    void windowStandsInTheMiddleOfTheScreen()
    {
        QWindow window;
        window.resize(640, 520);
        centreOnPrimaryScreen(window);
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        QCOMPARE(window.geometry().center(), screen.center());
    }

    void clicksReachOnlyWhatIsDrawn()
    {
        PXMainWindows window;
        QCOMPARE(window.mask(), QRegion(0, 0, 640, 420));
        window.rootObject()->setProperty("panelOpen", true);
        QCOMPARE(window.mask(), QRegion(0, 0, 640, 520));
        window.rootObject()->setProperty("panelOpen", false);
        QCOMPARE(window.mask(), QRegion(0, 0, 640, 420));
    }

    void whereNobodyCompositesCornersAreRound_data()
    {
        const Rows<Corner> row;
        row("the corner's pixel", {{0, 0}, false});
        row("one inside the circle", {{4, 4}, true});
        row("the upper edge", {{320, 0}, true});
        row("below on the right", {{639, 419}, false});
    }

    void whereNobodyCompositesCornersAreRound()
    {
        const auto [pixel, drawn] = Rows<Corner>::fetch();
        QCOMPARE(WindowShape::roundedRectangle({640, 420}).contains(pixel), drawn);
    }

    void sceneIsToldOfItsFirstFrame()
    {
        PXMainWindows window;
        QCOMPARE(window.rootObject()->property("firstFrameDrawn"), QVariant(false));
        QTRY_COMPARE(window.rootObject()->property("firstFrameDrawn"), QVariant(true));
    }

    void windowGoneBeforeItsFirstFrameHoldsNothingUp()
    {
        PXMainWindows().setTitle({});
        bool done = false;
        FirstFrame::then(this, [&done] { done = true; });
        QTRY_VERIFY(done);
        FirstFrame::then(this, [&done] { done = false; });
        QVERIFY(!done); // at once from now on
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
