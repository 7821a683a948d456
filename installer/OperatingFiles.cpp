#include "installer/Operating.h"

#include "base/DebugLine.h"
#include "base/Directory.h"
#include "installer/CopyQueue.h"
#include "installer/DirectoryCopy.h"
#include "installer/ShellCommand.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

namespace {

// All but hidden ones, without following a link: who may write there cannot lead the removal
// elsewhere. What cannot be removed stays.
void removeEntries(int directory)
{
    const int handle = openat(directory, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0) {
        return;
    }
    const std::unique_ptr<DIR, int (*)(DIR *)> entries(fdopendir(handle), closedir);
    while (const dirent *entry = readdir(entries.get())) {
        if (entry->d_name[0] == '.' || unlinkat(handle, entry->d_name, 0) == 0) {
            continue;
        }
        const int below =
            openat(handle, entry->d_name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        if (below >= 0) {
            removeEntries(below);
            close(below);
            unlinkat(handle, entry->d_name, AT_REMOVEDIR);
        }
    }
}

// Looks at the part of the path that exists.
bool leadsThroughPlantedLink(const QString &path)
{
    QString existing = QDir(path).absolutePath();
    int error = Directory::open(existing).error();
    while (error == ENOENT) {
        existing = QFileInfo(existing).path();
        error = Directory::open(existing).error();
    }
    return error == ELOOP;
}

// Empty, or as it was. Where root works, a link of this name is not followed.
bool openOrCreate(const QString &directory, const QString &fileName)
{
    const Directory parent = Directory::open(directory);
    const int noLink = geteuid() == 0 ? O_NOFOLLOW : 0;
    const int handle = openat(parent.handle(), QFile::encodeName(fileName).constData(),
        O_RDWR | O_CREAT | O_NONBLOCK | O_CLOEXEC | noLink, 0666);
    return handle >= 0 && close(handle) == 0;
}

} // namespace

bool Operating::copyDirectoryFilesThread(
    const QString &fromDir, const QString &toDir, bool coverFileIfExist)
{
    CopyQueue::instance().start({fromDir, toDir, coverFileIfExist, m_copyListener});
    return true;
}

bool Operating::copyDirectoryFiles(
    const QString &fromDir, const QString &toDir, bool coverFileIfExist)
{
    return copyDirectoryTree(fromDir, toDir, coverFileIfExist, [this] {
        emit copyDirectorySuccess();
    }).isCopied();
}

void Operating::waitForCopies() { CopyQueue::instance().waitUntilEmpty(); }

bool Operating::DelDir(const QString &path)
{
    if (path.isEmpty()) {
        return false;
    }
    const QString cleanPath = QDir::cleanPath(path); // with a "/" at its end a link is not seen
    if (QFileInfo(cleanPath).isSymLink()) {
        return QFile::remove(cleanPath);
    }
    const QDir dir(cleanPath);
    {
        const Directory directory = Directory::open(cleanPath);
        if (!directory.isOpen()) {
            return directory.error() != ELOOP;
        }
        removeEntries(directory.handle());
    }
    return dir.rmpath(dir.absolutePath());
}

bool Operating::deleteDir(const QString &path)
{
    debugLine() << "deleteDir:" << path;
    runShellCommand(QStringLiteral("rd /s /q \"") + insideQuotes(path) + QStringLiteral("\""));
    return true;
}

bool Operating::deletefile(const QString &path) { return QFile::remove(path); }

bool Operating::ishavefile(const QString &path)
{
    const QFileInfo file(path);
    return file.exists() && file.size() >= 1;
}

bool Operating::createfile(const QString &filePath, bool overwrite)
{
    QString directory = filePath;
    QString fileName;
    if (filePath.contains(QLatin1Char('.'))) {
        const int slash = filePath.lastIndexOf(QLatin1Char('/'));
        fileName = filePath.mid(slash + 1);
        if (slash < 0) {
            directory = QStringLiteral(".");
        } else {
            directory = slash == 0 ? QStringLiteral("/") : filePath.left(slash);
        }
    }
    if (leadsThroughPlantedLink(directory)
        || (!ishavefile(directory) && !QDir().mkpath(directory))) {
        qWarning("%s", "<文件操作>:创建文件目录失败");
        return false;
    }
    if (fileName.isEmpty()) {
        return true;
    }
    if (ishavefile(filePath)) {
        debugLine() << "<文件操作>:当前文件已存在<" << filePath << ">";
        if (overwrite) {
            if (!deletefile(filePath)) {
                qWarning().noquote().nospace() << "<文件操作>:删除文件<" << filePath << ">失败";
                return false;
            }
            debugLine() << "<文件操作>:删除文件<" << filePath << ">成功！";
        }
    }
    if (!openOrCreate(directory, fileName)) {
        qWarning("%s", "<文件操作>:创建文件失败");
        return false;
    }
    return true;
}
