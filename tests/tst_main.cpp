// The program's own main() from its start to the settings that it writes at its end, in
// directories of its own and with a server on loopback.
#include "LoopbackServer.h"
#include "Support.h"
#include "base/Deployment.h"
#include "base/ExecutableDirectory.h"
#include "base/InstalledFiles.h"
#include "installer/Operating.h"
#include "settings/DataManager.h"

#include <QApplication>
#include <QQuickItem>
#include <QQuickView>

int installerMain(int argc, char *argv[]); // app/main.cpp, renamed by the build

namespace {

struct Run {
    QTemporaryDir home;
    QString bundle = home.filePath("bundle");
    QString target = home.filePath("target");
    int languageBeforeTheScene = -1;
    bool isSaved = false;
    bool isUsed = false;
    QString font;
    QSize pixels;
};

Run *run = nullptr;

QString settingsIn(const QString &directory) { return directory + '/' + InstalledFiles::settings; }

QJsonValue languageIn(const QString &directory)
{
    return QJsonDocument::fromJson(contentOf(settingsIn(directory))).object()["softUseLanguage"];
}

// The window says this before it loads its scene.
void lookBeforeTheScene(QtMsgType, const QMessageLogContext &, const QString &text)
{
    if (text.startsWith("sys:")) {
        run->languageBeforeTheScene = DataManager::getInstance()->getCurrentLanguageIndex();
    }
}

// A copy begins, and the user closes the window at once.
void useTheWindow()
{
    auto *view = qobject_cast<QQuickView *>(QGuiApplication::topLevelWindows().value(0));
    if (!view || std::exchange(run->isUsed, true)) {
        return;
    }
    run->font = QApplication::font().family();
    run->pixels = view->size() * view->devicePixelRatio();
    DataManager::getInstance()->setInstallPath(run->target);
    view->rootObject()->findChild<Operating *>()->copyDirectoryFilesThread(
        run->bundle, run->target, true);
    QMetaObject::invokeMethod(view->rootObject(), "closeWindows");
}

// As soon as there is an application object.
void prepare()
{
    run->isSaved = put(settingsIn(executableDirectory()), R"({"softUseLanguage":"_de"})");
    auto *const server = new LoopbackServer;
    server->setParent(qApp);
    const QString address = server->baseAddress();
    Deployment &deployment = Deployment::current();
    deployment.apiBaseAddress = address;
    deployment.ipLookupAddress = address + "/lookup";
    deployment.mirrorAddresses = QStringList{address + "/cookie.txt", {}, {}, {}};
    QObject::connect(server, &QTcpServer::newConnection, qApp, useTheWindow, Qt::QueuedConnection);
}
Q_COREAPP_STARTUP_FUNCTION(prepare)

} // namespace

class MainTest : public QObject {
    Q_OBJECT

private slots:
    void startsInTheSavedLanguageAndEndsWithTheCopy()
    {
        Run current;
        run = &current; // cppcheck-suppress danglingLifetime ; main() ends before it does
        QVERIFY(QDir::setCurrent(current.home.path()) && QDir().mkpath(current.bundle));
        // The copy is at this file when the program is closed; the settings come after it.
        QFile large(current.bundle + "/A");
        QVERIFY(large.open(QIODevice::WriteOnly) && large.resize(qint64(1) << 28));
        QVERIFY(put(settingsIn(current.bundle), R"({"softUseLanguage":"of the bundle"})"));

        qInstallMessageHandler(lookBeforeTheScene);
        char name[] = "VornInstall";
        char *arguments[] = {name, nullptr};
        QCOMPARE(installerMain(1, arguments), 0);
        qInstallMessageHandler(nullptr);

        QVERIFY(current.isSaved && current.isUsed);
        QCOMPARE(current.languageBeforeTheScene, 4);
        QCOMPARE(current.font, QString("Microsoft YaHei UI"));
        const bool isDense = qEnvironmentVariableIsSet("QT_FONT_DPI");
        QCOMPARE(current.pixels, isDense ? QSize(1280, 1040) : QSize(640, 520));
        Operating::waitForCopies();
        QCOMPARE(QFileInfo(current.target + "/A").size(), qint64(1) << 28);
        const QString inUse = DataManager::getInstance()->getSoftUseLanguage();
        QCOMPARE(languageIn(current.target), QJsonValue(inUse));
        QCOMPARE(languageIn(current.home.path()), QJsonValue(inUse));
    }
};

QTEST_APPLESS_MAIN(MainTest)
#include "tst_main.moc"
