#include <QApplication>
#include <QNetworkAccessManager>
#include <QNetworkDiskCache>
#include <QQmlEngine>
#include <QQmlNetworkAccessManagerFactory>
#include <QQuickItem>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <thread>

#include "app/LogHandlers.h"
#include "app/PXLog.h"
#include "app/PXMainWindows.h"
#include "app/StartUp.h"
#include "base/Deployment.h"
#include "base/ExecutableDirectory.h"
#include "settings/DataManager.h"

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Restores the process-wide switches whatever a test did to them.
struct LogSwitches {
    const bool debugBefore = isDebug;
    const bool everythingBefore = openAllprint;

    LogSwitches(bool debug, bool everything)
    {
        isDebug = debug;
        openAllprint = everything;
    }
    ~LogSwitches()
    {
        isDebug = debugBefore;
        openAllprint = everythingBefore;
    }
    Q_DISABLE_COPY(LogSwitches)
};

} // namespace

class AppTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(m_directory.isValid());
        QVERIFY(QDir::setCurrent(m_directory.path()));
        Deployment::current() = Deployment();
        registerQmlTypes();
    }

    void switchesAreOffInADeliveredBuild()
    {
        QVERIFY(!isDebug);
        QVERIFY(!openAllprint);
    }

    void fileHandlerKeepsTheRightMessages_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("debug");
        QTest::addColumn<bool>("everything");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("pattern");

        const QByteArray record =
            R"(\[\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\]\[Line:7\]\[Function:f\]\[msg:50 %4 %1\]\r\n\r\n)";
        const QString errors = QStringLiteral("/errorlog.txt");
        const QString all = QStringLiteral("/log.txt");
        QTest::newRow("a warning is filed as an error")
            << int(QtWarningMsg) << false << false << errors << R"(\[Error\])" + record;
        QTest::newRow("a critical message is filed nowhere")
            << int(QtCriticalMsg) << false << false << errors << QByteArray();
        QTest::newRow("everything: critical")
            << int(QtCriticalMsg) << false << true << all << R"(\[Critical\])" + record;
        QTest::newRow("everything: info")
            << int(QtInfoMsg) << false << true << all << R"(\[Info\])" + record;
        QTest::newRow("everything: a debug line loses its text")
            << int(QtDebugMsg) << false << true << all << QByteArray(R"(\r\n)");
        QTest::newRow("everything: a debug build keeps it")
            << int(QtDebugMsg) << true << true << all << R"(\[Debug\])" + record;
        QTest::newRow("an unknown level has no tag") << 99 << false << true << all << record;
    }

    void fileHandlerKeepsTheRightMessages()
    {
        QFETCH(int, type);
        QFETCH(bool, debug);
        QFETCH(bool, everything);
        QFETCH(QString, file);
        QFETCH(QByteArray, pattern);

        const QString path = executableDirectory() + file;
        QFile::remove(path);
        const LogSwitches switches(debug, everything);
        kqMessageOutput(static_cast<QtMsgType>(type), QMessageLogContext("a.cpp", 7, "f", nullptr),
            QStringLiteral("50 %4 %1"));
        const QString content = QString::fromUtf8(contentOf(path));
        QFile::remove(path);
        const QRegularExpression expected(
            QRegularExpression::anchoredPattern(QString::fromUtf8(pattern)));
        QVERIFY2(expected.match(content).hasMatch(), qPrintable(content));
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
        QVERIFY(window.rootObject());
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(window.flags() & ~Qt::WindowFullscreenButtonHint, Qt::FramelessWindowHint);
        QCOMPARE(window.color(), QColor(Qt::transparent));
        QCOMPARE(window.size(), QSize(640, 520));

        window.setPosition(100, 100);
        QVERIFY(QMetaObject::invokeMethod(
            window.rootObject(), "send_drag", Q_ARG(int, 10), Q_ARG(int, -5)));
        QCOMPARE(window.position(), QPoint(110, 95));
        QVERIFY(QMetaObject::invokeMethod(window.rootObject(), "miniWindows"));
        QCOMPARE(window.windowState(), Qt::WindowMinimized);
        QVERIFY(QMetaObject::invokeMethod(window.rootObject(), "hideWindows"));
        QVERIFY(!window.isVisible());
        window.onShowWindows();
        QVERIFY(window.isVisible());
    }

    void bothWaysOutEndTheEventLoop()
    {
        for (const char *way : {"closeWindows", "quit"}) {
            PXMainWindows window;
            QObject *emitter = window.rootObject();
            if (qstrcmp(way, "quit") == 0) {
                emitter = window.engine();
            }
            QMetaObject::invokeMethod(emitter, way, Qt::QueuedConnection);
            QCOMPARE(QCoreApplication::exec(), 0);
        }
    }

    void settingsOutliveTheEngines()
    {
        for (int round = 0; round < 2; ++round) {
            PXMainWindows window;
        }
        QCOMPARE(DataManager::getInstance()->getSystemType(), QStringLiteral("linux"));
    }

    void engineGetsACacheInTheWorkingDirectory()
    {
        PXMainWindows window;
        QObject parent;
        QNetworkAccessManager *manager =
            window.engine()->networkAccessManagerFactory()->create(&parent);
        QCOMPARE(manager->parent(), &parent);
        auto *cache = qobject_cast<QNetworkDiskCache *>(manager->cache());
        QVERIFY(cache);
        QCOMPARE(QDir(cache->cacheDirectory()).dirName(),
            QStandardPaths::displayName(QStandardPaths::CacheLocation));
        QCOMPARE(
            QFileInfo(QDir(cache->cacheDirectory()).absolutePath()).path(), QDir::currentPath());
        QCOMPARE(cache->maximumCacheSize(), qint64(104857600));
    }

private:
    QTemporaryDir m_directory;
};

int main(int argc, char *argv[])
{
    useSoftwareSceneGraph();
    QApplication application(argc, argv);
    setUpFonts();
    AppTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_app.moc"
