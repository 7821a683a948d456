#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <memory>

class CopyListener;
class PathLook;

// The installer's work on the host. Everything runs on the calling thread but the copy that
// copyDirectoryFilesThread() starts, the looks of lookAtInstallPath() and the ...Thread twins of
// operations that only Windows has. Failures are told by the result and by a debug line; what
// people need to know comes as a sentence in the language of the interface through a signal.
//
//     Operating host;
//     QObject::connect(&host, &Operating::sendSystemCmdResult, &window, &Window::showOutcome);
//     host.creatVornRunShell(); // into the working directory, which is the bundle's
//     host.copyDirectoryFilesThread(host.getCurrentPath(), QStringLiteral("/opt/VornVPN"), true);
//     ...
//     Operating::waitForCopies(); // before the process ends
class Operating : public QObject {
    Q_OBJECT
    Q_CLASSINFO("QML.Element", "Operating") // for cmake/TypeDescriptions.cmake

public:
    explicit Operating(QObject *parent = nullptr);
    ~Operating() override;

    // Files.

    // Starts copyDirectoryFiles() on the thread pool and returns true at once. The copy goes on
    // when this object dies before it; its signals are then dropped. Its outcome comes as
    // sendSystemCmdResult(). Where no thread is to be had, it runs where it is waited for.
    Q_INVOKABLE bool copyDirectoryFilesThread(
        const QString &fromDir, const QString &toDir, bool coverFileIfExist);
    // Copies all but hidden entries; stops at the first failure, without a roll-back. The parent of
    // toDir must exist.
    Q_INVOKABLE bool copyDirectoryFiles(
        const QString &fromDir, const QString &toDir, bool coverFileIfExist);
    // Waits for the copies that copyDirectoryFilesThread() started, of all objects.
    static void waitForCopies();

    Q_INVOKABLE bool DelDir(const QString &path); // also removes parents that become empty
    Q_INVOKABLE bool deleteDir(const QString &path); // the Windows command; no effect on Linux
    Q_INVOKABLE bool deletefile(const QString &path);
    Q_INVOKABLE bool ishavefile(const QString &path); // an empty file counts as absent
    Q_INVOKABLE bool createfile(const QString &filePath, bool overwrite);
    Q_INVOKABLE static QString getCurrentPath();

    // Returns at once and looks on a thread of its own, for a limited time. The answer comes as
    // installPathLookedAt(), unless another path is asked about meanwhile.
    Q_INVOKABLE void lookAtInstallPath(const QString &path);

    // Launchers and desktop entries.

    Q_INVOKABLE bool creatVornRunShell(); // into the working directory, as the next one
    Q_INVOKABLE bool creatUninstallRunShell();
    Q_INVOKABLE bool addLinkToDeskTopLinux();
    Q_INVOKABLE bool deleteLinkToDeskTopLinux();
    Q_INVOKABLE bool addAutoStartUp();
    Q_INVOKABLE bool deleteAutoStartUp();

    // Processes and external commands.

    Q_INVOKABLE bool doOtherExe(const QString &path, const QStringList &args);
    Q_INVOKABLE bool killProcess(const QString &name); // always false
    Q_INVOKABLE bool checkExeIsRun(const QString &name);
    Q_INVOKABLE bool IsProcessRun(char *name); // always true
    Q_INVOKABLE bool openUrl(const QString &url);
    Q_INVOKABLE bool googleLogin();
    Q_INVOKABLE bool facebookLogin();
    Q_INVOKABLE bool joinTelegramGroup();
    Q_INVOKABLE static QString systemType(); // the distribution's name
    Q_INVOKABLE bool doInstallExe();
    Q_INVOKABLE bool doUpdateExe();
    Q_INVOKABLE bool replaceProtocolProgram();
    Q_INVOKABLE bool deleteCurExeFile(const QString &path);

    // Nothing to do on this system; each returns false. The ...Thread twins run on the thread pool.
    Q_INVOKABLE static bool isFirstInstall();
    Q_INVOKABLE bool stopVornService();
    Q_INVOKABLE bool startVornService();
    Q_INVOKABLE bool restartTap(const QString &name);
    Q_INVOKABLE bool checkServiceIsRunning(const QString &name);
    Q_INVOKABLE bool installServicePlugin();
    Q_INVOKABLE bool uninstallServicePlugin();
    Q_INVOKABLE static bool installServicePluginThread();
    Q_INVOKABLE static bool uninstallServicePluginThread();

    // Windows only; each returns false here.
    Q_INVOKABLE bool addLinkToDeskTop(const QString &target, const QString &name);
    Q_INVOKABLE bool delDeskTopLink(const QString &name);
    Q_INVOKABLE bool addLinkToAppLocation(const QString &target, const QString &name);
    Q_INVOKABLE bool delLinkToAppLocation(const QString &name);
    Q_INVOKABLE bool addStartTask(const QString &name, const QString &path);
    Q_INVOKABLE static bool addStartTaskThread(const QString &name, const QString &path);
    Q_INVOKABLE bool deleteStartTask(const QString &name);
    Q_INVOKABLE static bool deleteStartTaskThread(const QString &name);
    Q_INVOKABLE bool selectStartTask(const QString &name);
    Q_INVOKABLE bool setRegValue(const QString &key, const QString &name, const QString &value);
    Q_INVOKABLE bool removeRegValue(const QString &key, const QString &name);
    Q_INVOKABLE bool deleteFileAfterUninstall();

    // Probes. They hold no state.

    Q_INVOKABLE static QStringList getMac();
    Q_INVOKABLE static uint IPV4StringToInteger(const QString &ip); // 0 unless there are four parts
    Q_INVOKABLE static void GetIPSize();
    // False inside a block of the address table. A block's first and last address count as outside.
    Q_INVOKABLE static bool EnableIPInBackCh(const QString &ip);
    Q_INVOKABLE static double getCurrentSystemMemoryInfo();
    Q_INVOKABLE static double getCurrentSystemCpuRate(); // blocks for one second; always 0
    Q_INVOKABLE static bool checkRegExpIsMatch(const QString &reg, const QString &msg);
    Q_INVOKABLE static QString getFileMd5(const QString &path); // empty when it cannot be read
    Q_INVOKABLE static QString getCorrectUnicode(const QByteArray &bytes);
    Q_INVOKABLE static bool checkAdapterIsExist(const QString &name);

signals:
    // Once for each directory whose entries were all copied, the top one last. Emitted on the
    // thread that copies; a slot that runs there must not destroy this object.
    void copyDirectorySuccess();
    // The outcome of a copyDirectoryFilesThread(), once for each call, behind the signals of its
    // copy and on the same thread: true and no text, or false and a sentence that says what could
    // not be written, where and why.
    void sendSystemCmdResult(bool success, QString message);
    // addLinkToDeskTopLinux() or addAutoStartUp() could not write its entry: a short sentence.
    void entryNotWritten(QString message);
    // The answer to the newest lookAtInstallPath(): one short line about what an installation into
    // the path would meet, empty where there is nothing to say or nothing can be known; and the
    // nearest directory that exists, or else the home of the user who asked.
    void installPathLookedAt(QString path, QString hint, QUrl folder);

private:
    std::shared_ptr<CopyListener> m_copyListener; // shared with the copies that this object started
    PathLook *m_pathLook = nullptr; // a child, made by the first lookAtInstallPath()
};
