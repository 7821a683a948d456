#include "app/StartUp.h"
#include "base/ExecutableDirectory.h"
#include "settings/DataManager.h"
#include "uninstaller/Uninstaller.h"

#include <QApplication>
#include <QFile>
#include <QIcon>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickView>
#include <QTemporaryDir>

#include <optional>

int main(int argc, char *argv[])
{
    preferX11();
    useSoftwareSceneGraph();
    // Nothing stays behind: neither compiled QML in the home directory nor the runtime directory
    // that Qt makes for root, who has none after pkexec.
    qputenv("QML_DISABLE_DISK_CACHE", "1");
    std::optional<QTemporaryDir> runtimeDirectory;
    if (!qEnvironmentVariableIsSet("XDG_RUNTIME_DIR")) {
        runtimeDirectory.emplace();
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtimeDirectory->path()));
    }
    QApplication application(argc, argv);
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/image/small.ico")));
    DataManager *settings = DataManager::getInstance();
    setUpFonts();
    registerQmlTypes();
    settings->changeLanguage(settings->languageTypeTransToInt(settings->getSoftUseLanguage()));

    Uninstaller uninstaller{Removal(executableDirectory())};
    QQuickView window;
    window.setFlags(Qt::FramelessWindowHint);
    window.setColor(Qt::transparent);
    QObject::connect(window.engine(), &QQmlEngine::quit, &application, &QApplication::quit);
    window.rootContext()->setContextProperty(QStringLiteral("uninstaller"), &uninstaller);
    window.setSource(QUrl(QStringLiteral("qrc:/uninstall/Uninstall.qml")));
    centreOnPrimaryScreen(window);
    window.show();
    return QApplication::exec();
}
