#include "installer/DirectoryCopy.h"

#include "base/DebugLine.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace {

// What tells two names of one directory apart from two directories.
struct DirectoryIdentity {
    dev_t device = 0;
    ino_t inode = 0; // 0: there is no such directory

    static DirectoryIdentity of(const QString &path)
    {
        struct stat status { };
        if (stat(QFile::encodeName(path).constData(), &status) != 0) {
            return {};
        }
        return {status.st_dev, status.st_ino};
    }

    bool operator==(const DirectoryIdentity &other) const
    {
        return inode != 0 && inode == other.inode && device == other.device;
    }
};

class DirectoryCopier {
public:
    DirectoryCopier(bool cover, const std::function<void()> &directoryDone)
        : m_cover(cover)
        , m_directoryDone(directoryDone)
    {
    }

    bool copy(const QString &fromDir, const QString &toDir, const DirectoryIdentity &source);

private:
    bool copyEntries(const QString &fromDir, const QString &toDir, bool removeOld);
    bool inProgress(const DirectoryIdentity &directory) const
    {
        return std::find(m_inProgress.begin(), m_inProgress.end(), directory) != m_inProgress.end();
    }

    bool m_cover;
    const std::function<void()> &m_directoryDone;
    std::vector<DirectoryIdentity> m_inProgress; // being read or written, from the top down
};

bool DirectoryCopier::copy(
    const QString &fromDir, const QString &toDir, const DirectoryIdentity &source)
{
    debugLine() << "copyDirectoryFiles:fromDir" << fromDir;
    debugLine() << "copyDirectoryFiles:toDir" << toDir;
    const QDir target(toDir);
    const bool existed = target.exists();
    if (!existed && !QDir().mkdir(target.absolutePath())) {
        return false;
    }
    const DirectoryIdentity written = DirectoryIdentity::of(target.absolutePath());
    if (!(source == written)) {
        m_inProgress.push_back(source);
        m_inProgress.push_back(written);
        const bool copied = copyEntries(fromDir, toDir, m_cover && existed);
        m_inProgress.resize(m_inProgress.size() - 2);
        if (!copied) {
            return false;
        }
    }
    m_directoryDone();
    return true;
}

bool DirectoryCopier::copyEntries(const QString &fromDir, const QString &toDir, bool removeOld)
{
    const QString toPrefix = QDir(toDir).path() + QLatin1Char('/'); // an empty name is "."
    const QFileInfoList entries = QDir(fromDir).entryInfoList();
    for (const QFileInfo &entry : entries) {
        const QString name = entry.fileName();
        if (name == QLatin1String(".") || name == QLatin1String("..")) {
            continue;
        }
        const QString from = entry.filePath();
        const QString to = toPrefix + name;
        if (!entry.isDir()) {
            if (removeOld) {
                // Much cheaper than QFile::remove(), which counts for small files. It takes a
                // dangling link too; whether it fails since there is nothing or since it may not,
                // the copy tells.
                unlink(QFile::encodeName(to).constData());
            }
            if (!QFile::copy(from, to)) {
                return false;
            }
            continue;
        }
        const DirectoryIdentity source = DirectoryIdentity::of(from);
        if (inProgress(source)) {
            debugLine() << "copyDirectoryFiles:skip" << from;
        } else if (!copy(from, to, source)) {
            return false;
        }
    }
    return true;
}

} // namespace

bool copyDirectoryTree(const QString &fromDir, const QString &toDir, bool cover,
    const std::function<void()> &directoryDone)
{
    return DirectoryCopier(cover, directoryDone)
        .copy(fromDir, toDir, DirectoryIdentity::of(QDir(fromDir).absolutePath()));
}
