#include "installer/DirectoryCopy.h"

#include "base/DebugLine.h"
#include "base/Directory.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <utility>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr mode_t topMode = 0755;

// Why QDir would list nothing or not everything, which it does not tell: the directory cannot be
// read, or a name is no text (EILSEQ). 0 when all is well.
int listingError(const QString &path)
{
    const std::unique_ptr<DIR, int (*)(DIR *)> directory(
        opendir(QFile::encodeName(path).constData()), closedir);
    if (!directory) {
        return errno;
    }
    errno = 0;
    while (const dirent *entry = readdir(directory.get())) {
        const QByteArray name(entry->d_name);
        if (!name.startsWith('.') && QFile::encodeName(QFile::decodeName(name)) != name) {
            return EILSEQ;
        }
        errno = 0;
    }
    return errno;
}

// QFile::copy() does not tell why it failed; the same things are tried once more.
int writeError(const Directory &directory, const QByteArray &name, qint64 size)
{
    if (faccessat(directory.handle(), ".", W_OK | X_OK, AT_EACCESS) != 0) {
        return errno;
    }
    struct stat status { };
    if (fstatat(directory.handle(), name.constData(), &status, AT_SYMLINK_NOFOLLOW) == 0) {
        return EEXIST;
    }
    const int trial =
        openat(directory.handle(), ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (trial < 0) {
        return errno == EOPNOTSUPP || errno == EISDIR ? 0 : errno;
    }
    const int error = size > 0 ? posix_fallocate(trial, 0, size) : 0;
    close(trial);
    return error;
}

class DirectoryCopier {
public:
    DirectoryCopier(bool cover, const std::function<void()> &directoryDone)
        : m_cover(cover)
        , m_directoryDone(directoryDone)
    {
    }

    void copyTop(const QString &fromDir, const QString &toDir);
    const CopyOutcome &outcome() const { return m_outcome; }

private:
    // Where the entries of one directory go.
    struct Target {
        Directory directory;
        QString name; // for log lines and reports
        QString path; // for QFile
        bool existed; // before this copy
    };

    // Files of a directory that another user may change are made where he cannot, and renamed:
    // QFile::copy() sets the mode by name, and the name could be a link by then.
    struct Workshop {
        explicit Workshop(const Directory &around)
            : directory(around.isExposed() ? around.makePrivate(&name) : Directory())
            , m_around(around)
        {
        }
        ~Workshop()
        {
            if (directory.isOpen()) {
                unlinkat(m_around.handle(), name.constData(), AT_REMOVEDIR);
            }
        }
        Workshop(const Workshop &) = delete;
        Workshop &operator=(const Workshop &) = delete;

        bool isMissing() const { return !directory.isOpen() && m_around.isExposed(); }

        QByteArray name;
        Directory directory; // not open where none is needed

    private:
        const Directory &m_around;
    };

    bool copy(const QString &fromDir, const Target &target, const Directory::Identity &source);
    bool copyEntries(const QString &fromDir, const Target &target);
    bool copyFile(const QFileInfo &entry, const Target &target, const Workshop &workshop);
    bool copyInto(const QFileInfo &entry, const Target &target) const;
    bool copyThrough(const Workshop &workshop, const QFileInfo &entry, const Target &target) const;
    bool copySubdirectory(const QFileInfo &entry, const Target &target, const Workshop &workshop);
    static Directory makeDirectory(const QFileInfo &entry, const Target &target);
    bool fail(CopyOutcome::Step step, int error, const QString &name, const QString &directory);
    bool inProgress(const Directory::Identity &directory) const
    {
        return std::find(m_inProgress.begin(), m_inProgress.end(), directory) != m_inProgress.end();
    }

    bool m_cover;
    const std::function<void()> &m_directoryDone;
    std::vector<Directory::Identity> m_inProgress; // being read or written, from the top down
    CopyOutcome m_outcome;
};

bool DirectoryCopier::fail(
    CopyOutcome::Step step, int error, const QString &name, const QString &directory)
{
    m_outcome.failed = step;
    m_outcome.error = error;
    m_outcome.name = name;
    m_outcome.directory = directory;
    return false;
}

void logDirectories(const QString &fromDir, const QString &toDir)
{
    debugLine() << "copyDirectoryFiles:fromDir" << fromDir;
    debugLine() << "copyDirectoryFiles:toDir" << toDir;
}

// The directory of this name; where there is none, a new one beside the others in its parent.
Directory openOrMake(const QString &path, bool *existed)
{
    Directory directory = Directory::open(QDir(path).path()); // an empty name is "."
    *existed = directory.isOpen();
    if (*existed || directory.error() == ELOOP) {
        return directory;
    }
    const QFileInfo made(QDir(path).absolutePath());
    Directory parent = Directory::open(made.path());
    return parent.isOpen() ? parent.makeSubdirectory(QFile::encodeName(made.fileName()), topMode)
                           : std::move(parent);
}

void DirectoryCopier::copyTop(const QString &fromDir, const QString &toDir)
{
    logDirectories(fromDir, toDir);
    bool existed = false;
    Directory directory = openOrMake(toDir, &existed);
    if (!directory.isOpen()) {
        fail(CopyOutcome::MakeDirectory, directory.error(), QString(), toDir);
        return;
    }
    const QString path = directory.path();
    const QString name = QDir(toDir).path();
    copy(fromDir, {std::move(directory), name, path.isEmpty() ? name : path, existed},
        Directory::Identity::of(QDir(fromDir).absolutePath()));
}

bool DirectoryCopier::copy(
    const QString &fromDir, const Target &target, const Directory::Identity &source)
{
    const Directory::Identity written = target.directory.identity();
    if (!(source == written)) {
        m_inProgress.push_back(source);
        m_inProgress.push_back(written);
        const bool copied = copyEntries(fromDir, target);
        m_inProgress.resize(m_inProgress.size() - 2);
        if (!copied) {
            return false;
        }
    }
    m_directoryDone();
    return true;
}

bool DirectoryCopier::copyEntries(const QString &fromDir, const Target &target)
{
    if (const int error = listingError(fromDir)) {
        return fail(CopyOutcome::ReadDirectory, error, QString(), fromDir);
    }
    const Workshop workshop(target.directory);
    if (workshop.isMissing()) {
        return fail(CopyOutcome::Write, workshop.directory.error(), QString(), target.name);
    }
    const QFileInfoList entries = QDir(fromDir).entryInfoList();
    for (const QFileInfo &entry : entries) {
        if (entry.fileName() == QLatin1String(".") || entry.fileName() == QLatin1String("..")) {
            continue;
        }
        const bool copied = entry.isDir() ? copySubdirectory(entry, target, workshop)
                                          : copyFile(entry, target, workshop);
        if (!copied) {
            return false;
        }
    }
    return true;
}

bool DirectoryCopier::copyInto(const QFileInfo &entry, const Target &target) const
{
    if (m_cover && target.existed) {
        // Much cheaper than QFile::remove(), which counts for small files. It takes a dangling link
        // too; whether it fails since there is nothing or since it may not, the copy tells.
        unlinkat(target.directory.handle(), QFile::encodeName(entry.fileName()).constData(), 0);
    }
    return QFile::copy(entry.filePath(), target.path + QLatin1Char('/') + entry.fileName());
}

bool DirectoryCopier::copyThrough(
    const Workshop &workshop, const QFileInfo &entry, const Target &target) const
{
    const QByteArray name = QFile::encodeName(entry.fileName());
    const int made = workshop.directory.handle();
    const bool copied = QFile::copy(entry.filePath(),
                            workshop.directory.path() + QLatin1Char('/') + entry.fileName())
        && renameat2(made, name.constData(), target.directory.handle(), name.constData(),
               m_cover ? 0 : RENAME_NOREPLACE)
            == 0;
    unlinkat(made, name.constData(), 0); // only there after a failure
    return copied;
}

bool DirectoryCopier::copyFile(
    const QFileInfo &entry, const Target &target, const Workshop &workshop)
{
    const QString from = entry.filePath();
    if (!entry.isFile()) { // reading a pipe does not end, nor does a device
        return fail(CopyOutcome::Read, EINVAL, entry.fileName(), entry.path());
    }
    const QByteArray name = QFile::encodeName(entry.fileName());
    const bool copied = workshop.directory.isOpen() ? copyThrough(workshop, entry, target)
                                                    : copyInto(entry, target);
    if (copied) {
        ++m_outcome.files;
        return true;
    }
    if (access(QFile::encodeName(from).constData(), R_OK) != 0) {
        return fail(CopyOutcome::Read, errno, entry.fileName(), entry.path());
    }
    return fail(CopyOutcome::Write, writeError(target.directory, name, entry.size()),
        entry.fileName(), target.name);
}

Directory DirectoryCopier::makeDirectory(const QFileInfo &entry, const Target &target)
{
    const QByteArray name = QFile::encodeName(entry.fileName());
    struct stat status { };
    const bool isKnown = stat(QFile::encodeName(entry.filePath()).constData(), &status) == 0;
    const mode_t mode = isKnown ? status.st_mode & 0777 : topMode;
    return target.directory.makeSubdirectory(name, mode);
}

bool DirectoryCopier::copySubdirectory(
    const QFileInfo &entry, const Target &target, const Workshop &workshop)
{
    const QString from = entry.filePath();
    const QString to = target.name + QLatin1Char('/') + entry.fileName();
    const Directory::Identity source = Directory::Identity::of(from);
    if (inProgress(source)) {
        debugLine() << "copyDirectoryFiles:skip" << from;
        return true;
    }
    logDirectories(from, to);
    Directory directory = target.existed
        ? target.directory.subdirectory(QFile::encodeName(entry.fileName()))
        : Directory();
    const bool existed = directory.isOpen();
    if (!existed && directory.error() != ELOOP) {
        directory = makeDirectory(entry, target);
    }
    if (!directory.isOpen()) {
        return fail(CopyOutcome::MakeDirectory, directory.error(), entry.fileName(), target.name);
    }
    const QString path = existed || workshop.directory.isOpen()
        ? directory.pathBelow(target.path)
        : target.path + QLatin1Char('/') + entry.fileName();
    return copy(from, {std::move(directory), to, path.isEmpty() ? to : path, existed}, source);
}

} // namespace

CopyOutcome copyDirectoryTree(const QString &fromDir, const QString &toDir, bool cover,
    const std::function<void()> &directoryDone)
{
    DirectoryCopier copier(cover, directoryDone);
    copier.copyTop(fromDir, toDir);
    return copier.outcome();
}
