#include "installer/Operating.h"

#include "base/DebugLine.h"
#include "base/InstalledFiles.h"
#include "installer/ShellCommand.h"
#include "installer/TextFile.h"
#include "settings/DataManager.h"

#include <QCoreApplication>

namespace {

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

bool writeAndRun(const char *file, const QString &text, const char *command)
{
    if (!writeTextFile(QString::fromLatin1(file), text)) {
        return false;
    }
    runShellCommand(QString::fromLatin1(command));
    return true;
}

} // namespace

bool Operating::creatVornRunShell()
{
    return writeAndRun(
        "./VornRun.sh", launcherText(QStringLiteral("VORN")), "chmod 777 ./VornRun.sh");
}

bool Operating::creatUninstallRunShell()
{
    return writeAndRun("./UninstallRun.sh", launcherText(QStringLiteral("Uninstall")),
        "chmod 777 ./UninstallRun.sh");
}

bool Operating::addLinkToDeskTopLinux()
{
    // The sign-in page hands its result to the client through this URL scheme.
    const bool written = writeAndRun(InstalledFiles::menuEntry,
        desktopEntryText() + QStringLiteral("MimeType=x-scheme-handler/VORN;\n"),
        "chmod 777 /usr/share/applications/Vorn.desktop");
    if (!written) {
        emit entryNotWritten(
            QCoreApplication::translate("main", "The menu entry could not be created."));
    }
    return written;
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
    const bool written = writeAndRun(InstalledFiles::autostartEntry, desktopEntryText(),
        "chmod +x /etc/xdg/autostart/Vorn.desktop");
    if (!written) {
        emit entryNotWritten(QCoreApplication::translate(
            "main", "VornVPN could not be set to start automatically."));
    }
    return written;
}

bool Operating::deleteAutoStartUp()
{
    runShellCommand(QStringLiteral("rm -rf /etc/xdg/autostart/Vorn.desktop"));
    return true;
}
