#include <QApplication>
#include <QIcon>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickView>

#include "app/StartUp.h"
#include "base/ExecutableDirectory.h"
#include "packaging/uninstall/Uninstaller.h"
#include "settings/DataManager.h"

int main(int argc, char *argv[])
{
    preferX11();
    useSoftwareSceneGraph();
    // Compiled QML would stay behind in the home directory.
    qputenv("QML_DISABLE_DISK_CACHE", "1");
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
