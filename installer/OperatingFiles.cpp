#include "installer/Operating.h"

#include "base/DebugLine.h"
#include "installer/CopyQueue.h"
#include "installer/DirectoryCopy.h"
#include "installer/ShellCommand.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

bool Operating::copyDirectoryFilesThread(
    const QString &fromDir, const QString &toDir, bool coverFileIfExist)
{
    CopyQueue::instance().start({fromDir, toDir, coverFileIfExist, m_copyListener});
    return true;
}

bool Operating::copyDirectoryFiles(
    const QString &fromDir, const QString &toDir, bool coverFileIfExist)
{
    return copyDirectoryTree(
        fromDir, toDir, coverFileIfExist, [this] { emit copyDirectorySuccess(); });
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
    if (!dir.exists()) {
        return true;
    }
    // QDir::System lists links that dangle, as one does whose target has just been removed.
    const QFileInfoList entries =
        dir.entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System);
    for (const QFileInfo &entry : entries) {
        if (entry.isFile() || entry.isSymLink()) {
            entry.dir().remove(entry.fileName());
        } else {
            DelDir(entry.absoluteFilePath());
        }
    }
    // The removal of the last subdirectory may have taken this one with it.
    return dir.rmpath(dir.absolutePath()) || !dir.exists();
}

bool Operating::deleteDir(const QString &path)
{
    debugLine() << "deleteDir:" << path;
    runShellCommand(QStringLiteral("rd /s /q \"") + path + QStringLiteral("\""));
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
    if (!ishavefile(directory) && !QDir().mkpath(directory)) {
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
    QFile file(filePath);
    if (!file.open(QIODevice::ReadWrite)) {
        qWarning("%s", "<文件操作>:创建文件失败");
        return false;
    }
    return true;
}
