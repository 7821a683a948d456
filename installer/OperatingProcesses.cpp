#include "installer/Operating.h"

#include "base/DebugLine.h"
#include "base/Deployment.h"
#include "installer/ShellCommand.h"
#include "installer/TextFile.h"
#include "settings/DataManager.h"

#include <QDesktopServices>
#include <QFile>
#include <QProcess>
#include <QSysInfo>
#include <QUrl>
#include <QUrlQuery>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int processWaitMs = 30000;
constexpr mode_t batchFileMode = 0644;

// A download cannot be run. As for the launchers, the command is left out where its name could
// become a link while root works, and a link of that name is never followed there.
void makeInstallerRunnable()
{
    const QByteArray name("VornInstall.run");
    const Directory here = Directory::open(QStringLiteral("."));
    if (geteuid() == 0) {
        const int handle =
            openat(here.handle(), name.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
        struct stat status { };
        const bool isFile = handle >= 0 && fstat(handle, &status) == 0 && S_ISREG(status.st_mode);
        if (isFile) {
            fchmod(handle, 0777);
        }
        if (handle >= 0) {
            close(handle);
        }
        if (!isFile || here.isExposed()) {
            return;
        }
    }
    runShellCommand(QStringLiteral("chmod 777 ./VornInstall.run"));
}

} // namespace

bool Operating::doOtherExe(const QString &path, const QStringList &args)
{
    debugLine() << "exePath:" << path;
    const bool started = QProcess::startDetached(path, args);
    debugLine() << (started ? "执行成功" : "执行失败");
    return started;
}

bool Operating::killProcess(const QString &name)
{
    if (!isProcessName(name)) {
        return false;
    }
    runShellCommand(QStringLiteral("ps -ef | grep ") + name
        + QStringLiteral("| grep -v grep | awk '{print $2}' | xargs kill -9"));
    return false;
}

bool Operating::checkExeIsRun(const QString &name)
{
    if (!isProcessName(name)) {
        return false;
    }
    QProcess process;
    process.start(QStringLiteral("sh"),
        {QStringLiteral("-c"), QString(QStringLiteral("ps | grep ") + name)}, QIODevice::ReadWrite);
    process.waitForStarted(processWaitMs);
    process.waitForReadyRead(processWaitMs);
    const QString output = QString::fromLocal8Bit(process.readAllStandardOutput());
    debugLine() << "checkExeIsRun result:" << output;
    const bool running = output.contains(name);
    process.waitForFinished(processWaitMs);
    return running;
}

bool Operating::IsProcessRun(char *name)
{
    Q_UNUSED(name)
    return true;
}

bool Operating::openUrl(const QString &url)
{
    debugLine() << "openUrl:" << url;
    return QDesktopServices::openUrl(QUrl(url));
}

bool Operating::googleLogin()
{
    const Deployment &deployment = Deployment::current();
    const QPair<QString, QString> items[] = {
        {QStringLiteral("response_type"), QStringLiteral("code")},
        {QStringLiteral("scope"), QStringLiteral("email openid profile")},
        {QStringLiteral("state"), QStringLiteral("authorized")},
        {QStringLiteral("access_type"), QStringLiteral("offline")},
        {QStringLiteral("client_id"), deployment.oauthClientId},
        {QStringLiteral("redirect_uri"), deployment.webSignInHost + QStringLiteral("/googlelogin")},
    };
    QUrlQuery query;
    for (const auto &[key, value] : items) {
        query.addQueryItem(key, QString::fromLatin1(QUrl::toPercentEncoding(value)));
    }
    QUrl url(QStringLiteral("https://accounts.google.com/o/oauth2/v2/auth/oauthchooseaccount"));
    url.setQuery(query);
    return openUrl(url.toString(QUrl::FullyEncoded));
}

bool Operating::facebookLogin()
{
    return openUrl(Deployment::current().webSignInHost + QStringLiteral("/fblogin"));
}

bool Operating::joinTelegramGroup() { return openUrl(Deployment::current().chatGroupLink); }

QString Operating::systemType()
{
    QString type = QSysInfo::productType();
    debugLine() << "systemType:" << type;
    return type;
}

bool Operating::doInstallExe()
{
    debugLine() << "doInstallExe()------------------->";
    const DataManager *settings = DataManager::getInstance();
    if (settings->getSystemType() != QLatin1String("linux")) {
        return QProcess::startDetached(
            settings->getInstallPath() + QStringLiteral("/VornInstall.exe"), {});
    }
    debugLine() << "do VornInstall.run 1";
    makeInstallerRunnable();
    const bool started = QProcess::startDetached(QStringLiteral("./VornInstall.run"), {});
    debugLine() << "do VornInstall.run 2:" << started;
    return started;
}

bool Operating::doUpdateExe() { return QProcess::startDetached(QStringLiteral("./Update"), {}); }

bool Operating::replaceProtocolProgram()
{
    killProcess(QStringLiteral("sarko2linux"));
    const QString path = getCurrentPath() + QLatin1Char('/');
    debugLine() << "替换协议程序";
    debugLine() << "path:" << path;
    QFile::remove(path + QStringLiteral("sarko2linux"));
    const bool renamed = QFile::rename(
        path + QStringLiteral("sarko2linuxTemp"), path + QStringLiteral("sarko2linux"));
    debugLine() << (renamed ? "重命名成功" : "重命名失败");
    return renamed;
}

bool Operating::deleteCurExeFile(const QString &path)
{
    debugLine() << "deleteCurExeFile:" << path;
    // The pings are the wait for this process to end: a running program cannot be removed there.
    const QString script = QStringLiteral("@echo off\r\n"
                                          "echo deleting\r\n"
                                          "echo %time%\r\n"
                                          "ping 127.0.0.1 /n 10 >nul\r\n"
                                          "echo %time%\r\n"
                                          "rd /s /q \"")
        + path + QStringLiteral("\"\r\n");
    writeTextFile(QStringLiteral("./deal.bat"), script, batchFileMode);
    debugLine() << "strValue:" << script;
    return QProcess::startDetached(QStringLiteral("deal.bat"), {});
}
