// What only Windows has: services, shortcuts, scheduled tasks, the registry. The scene reaches for
// these on every system; on this one there is nothing to do, and each says so with false.

#include "installer/Operating.h"

#include <QtConcurrent>

bool Operating::isFirstInstall() { return false; }
bool Operating::stopVornService() { return false; }
bool Operating::startVornService() { return false; }
bool Operating::restartTap(const QString & /*name*/) { return false; }
bool Operating::checkServiceIsRunning(const QString & /*name*/) { return false; }

bool Operating::installServicePluginThread() { return false; }
bool Operating::uninstallServicePluginThread() { return false; }

bool Operating::installServicePlugin()
{
    QtConcurrent::run(&Operating::installServicePluginThread);
    return false;
}

bool Operating::uninstallServicePlugin()
{
    QtConcurrent::run(&Operating::uninstallServicePluginThread);
    return false;
}

bool Operating::addLinkToDeskTop(const QString & /*target*/, const QString & /*name*/)
{
    return false;
}
bool Operating::delDeskTopLink(const QString & /*name*/) { return false; }
bool Operating::addLinkToAppLocation(const QString & /*target*/, const QString & /*name*/)
{
    return false;
}
bool Operating::delLinkToAppLocation(const QString & /*name*/) { return false; }

bool Operating::addStartTaskThread(const QString & /*name*/, const QString & /*path*/)
{
    return false;
}
bool Operating::deleteStartTaskThread(const QString & /*name*/) { return false; }

bool Operating::addStartTask(const QString &name, const QString &path)
{
    QtConcurrent::run(&Operating::addStartTaskThread, name, path);
    return false;
}

bool Operating::deleteStartTask(const QString &name)
{
    QtConcurrent::run(&Operating::deleteStartTaskThread, name);
    return false;
}

bool Operating::selectStartTask(const QString & /*name*/) { return false; }
bool Operating::setRegValue(
    const QString & /*key*/, const QString & /*name*/, const QString & /*value*/)
{
    return false;
}
bool Operating::removeRegValue(const QString & /*key*/, const QString & /*name*/) { return false; }
bool Operating::deleteFileAfterUninstall() { return false; }
