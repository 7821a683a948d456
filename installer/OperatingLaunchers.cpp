#include "installer/Operating.h"

#include "base/DebugLine.h"
#include "base/InstalledFiles.h"
#include "installer/ShellCommand.h"
#include "installer/TextFile.h"
#include "settings/DataManager.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace {

constexpr mode_t runnableByAll = 0777; // and to be changed by all, as the field has it
constexpr mode_t runnable = 0755;

constexpr char menuEntryNotWritten[] =
    QT_TRANSLATE_NOOP("main", "The menu entry could not be created.");
constexpr char autostartNotWritten[] =
    QT_TRANSLATE_NOOP("main", "The automatic start could not be set up.");

// The client brings its own Qt and needs the rights of root. Nothing is quoted, and the blanks are
// doubled, as every client in the field has it.
QString launcherText(const QString &program)
{
    const QString path = DataManager::getInstance()->getInstallPath();
    return QStringLiteral("#!/bin/sh\n"
                          "pkexec env DISPLAY=$DISPLAY XAUTHORITY=$XAUTHORITY LD_LIBRARY_PATH=")
        + path + QStringLiteral("/lib  QT_QPA_PLATFORM_PLUGIN_PATH=") + path
        + QStringLiteral("/plugins  QML2_IMPORT_PATH=") + path + QStringLiteral("/qml  ") + path
        + QLatin1Char('/') + program + QLatin1Char('\n');
}

QString desktopEntryText()
{
    const QString path = DataManager::getInstance()->getInstallPath();
    return QStringLiteral("[Desktop Entry]\n"
                          "Type=Application\n"
                          "Name=VORN\n"
                          "GenericName=VORN\n"
                          "Terminal=false\n"
                          "Exec=")
        + path + QStringLiteral("/VornRun.sh\nIcon=") + path
        + QStringLiteral("/small.ico\nCategories=Development;\n");
}

// The command goes by name. Where somebody else could put a link in place of the name while root
// works, it is left out: the descriptor has set the mode.
WrittenFile writeAndRun(const QString &file, const QString &text, mode_t mode, const char *command)
{
    const WrittenFile result = writeTextFile(file, text, mode);
    if (result.isOpened && !Directory::open(QFileInfo(file).path()).isExposed()) {
        runShellCommand(QString::fromLatin1(command));
    }
    return result;
}

bool writeLauncher(const char *name, const char *program, const char *command)
{
    const QString file = QStringLiteral("./") + QLatin1String(name);
    const QString text = launcherText(QString::fromLatin1(program));
    return writeAndRun(file, text, runnableByAll, command).isOpened;
}

} // namespace

bool Operating::creatVornRunShell()
{
    return writeLauncher(
        InstalledFiles::clientLauncher, InstalledFiles::client, "chmod 777 ./VornRun.sh");
}

bool Operating::creatUninstallRunShell()
{
    return writeLauncher(InstalledFiles::uninstallLauncher, InstalledFiles::uninstaller,
        "chmod 777 ./UninstallRun.sh");
}

bool Operating::addLinkToDeskTopLinux()
{
    // The sign-in page hands its result to the client through this URL scheme.
    const WrittenFile result = writeAndRun(QString::fromLatin1(InstalledFiles::menuEntry),
        desktopEntryText() + QStringLiteral("MimeType=x-scheme-handler/VORN;\n"), runnableByAll,
        "chmod 777 /usr/share/applications/Vorn.desktop");
    if (!result.isWritten) {
        emit entryNotWritten(QCoreApplication::translate("main", menuEntryNotWritten));
    }
    return result.isOpened;
}

bool Operating::deleteLinkToDeskTopLinux()
{
    runShellCommand(QStringLiteral("rm -f /usr/share/applications/Vorn.desktop"));
    return true;
}

bool Operating::addAutoStartUp()
{
    debugLine() << "addAutoStartUp------------->";
    deleteAutoStartUp();
    const WrittenFile result = writeAndRun(QString::fromLatin1(InstalledFiles::autostartEntry),
        desktopEntryText(), runnable, "chmod +x /etc/xdg/autostart/Vorn.desktop");
    if (!result.isWritten) {
        emit entryNotWritten(QCoreApplication::translate("main", autostartNotWritten));
    }
    return result.isOpened;
}

bool Operating::deleteAutoStartUp()
{
    runShellCommand(QStringLiteral("rm -rf /etc/xdg/autostart/Vorn.desktop"));
    return true;
}
