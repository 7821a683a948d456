#include "app/StartUp.h"
#include "base/ExecutableDirectory.h"
#include "settings/DataManager.h"
#include "uninstaller/UninstallWindow.h"
#include "uninstaller/Uninstaller.h"

#include <QApplication>
#include <QFile>
#include <QIcon>
#include <QLoggingCategory>
#include <QQmlEngine>
#include <QTemporaryDir>

#include <cstdlib>
#include <optional>

int main(int argc, char *argv[])
{
    // The settings are read with their password. The user's QT_LOGGING_RULES go before this.
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    preferX11();
    scaleOnDenseScreens();
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
    setUpFonts();
    registerQmlTypes();
    speakLanguageOf(executableDirectory(), *DataManager::getInstance());

    Uninstaller uninstaller{Removal(executableDirectory())};
    UninstallWindow window(uninstaller);
    QObject::connect(window.engine(), &QQmlEngine::quit, &application, &QApplication::quit);
    return window.open() ? QApplication::exec() : EXIT_FAILURE;
}
