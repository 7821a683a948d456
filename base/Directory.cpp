#include "base/Directory.h"

#include "base/AskingUser.h"
#include "base/InstalledFiles.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int mostLinks = 40; // as the kernel has it
constexpr int mostNames = 100; // tried for a file or directory beside others

enum class Place { OnTheWay, Below };

bool isFollowed(uid_t owner, Place place)
{
    return owner == 0 || (place == Place::OnTheWay && AskingUser::id() == owner);
}

struct Descriptor {
    explicit Descriptor(int opened)
        : number(opened)
    {
    }
    ~Descriptor()
    {
        if (number >= 0) {
            close(number);
        }
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    int number; // -1: not open
};

// The path that a link of this descriptor leads to; empty, and errno says why, when it is not
// followed. Nobody can exchange the link between the look at its owner and the reading.
QByteArray followed(const Descriptor &link, uid_t owner, Place place)
{
    if (!isFollowed(owner, place)) {
        errno = ELOOP;
        return {};
    }
    char target[PATH_MAX];
    const ssize_t length = readlinkat(link.number, "", target, sizeof target);
    return {target, static_cast<int>(std::max<ssize_t>(length, 0))};
}

// Opens a directory as the kernel would, but looks at every link before it follows it. -1 and errno
// on failure.
int walk(int start, QByteArray path, Place place)
{
    constexpr int flags = O_PATH | O_NOFOLLOW | O_CLOEXEC;
    Descriptor current(openat(start, path.startsWith('/') ? "/" : ".", flags | O_DIRECTORY));
    int links = 0;
    while (current.number >= 0 && !path.isEmpty()) {
        const int slash = path.indexOf('/');
        const QByteArray name = slash < 0 ? path : path.left(slash);
        path = slash < 0 ? QByteArray() : path.mid(slash + 1);
        if (name.isEmpty()) {
            continue;
        }
        Descriptor next(openat(current.number, name.constData(), flags));
        struct stat status { };
        if (next.number < 0 || fstat(next.number, &status) != 0) {
            return -1;
        }
        if (!S_ISLNK(status.st_mode)) {
            std::swap(current.number, next.number);
            continue;
        }
        const QByteArray target = followed(next, status.st_uid, place);
        if (target.isEmpty() || ++links > mostLinks) {
            errno = ELOOP;
            return -1;
        }
        path = target + '/' + path;
        if (target.startsWith('/')) {
            Descriptor root(open("/", flags | O_DIRECTORY));
            std::swap(current.number, root.number);
        }
    }
    return current.number < 0 ? -1 : openat(current.number, ".", flags | O_DIRECTORY);
}

QString descriptorPath(int handle) { return QStringLiteral("/proc/self/fd/%1").arg(handle); }

QByteArray randomName(const QByteArray &prefix)
{
    return prefix + '.' + QByteArray::number(QRandomGenerator::global()->generate64(), 36);
}

// Where the directory takes no new file, as for a user in the directory of an installation whose
// launchers everybody may write.
WrittenFile overwrite(const Directory &directory, const QByteArray &name, const QByteArray &content)
{
    constexpr int flags = O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    WrittenFile result;
    const int handle = openat(directory.handle(), name.constData(), flags);
    struct stat status { };
    if (handle >= 0 && fstat(handle, &status) == 0 && S_ISREG(status.st_mode)) {
        result.isOpened = true;
        result.isWritten = ftruncate(handle, 0) == 0 && writeAll(handle, content);
    }
    if (handle >= 0) {
        close(handle);
    }
    return result;
}

} // namespace

bool writeAll(int handle, const QByteArray &content)
{
    qint64 done = 0;
    while (done < content.size()) {
        const ssize_t written = write(
            handle, content.constData() + done, static_cast<std::size_t>(content.size() - done));
        if (written < 0 && errno != EINTR) {
            return false;
        }
        done += std::max<ssize_t>(written, 0);
    }
    return true;
}

Directory::Identity Directory::Identity::of(const QString &path)
{
    struct stat status { };
    if (stat(QFile::encodeName(path).constData(), &status) != 0) {
        return {};
    }
    return {status.st_dev, status.st_ino};
}

Directory::Directory(int handle)
    : m_handle(handle)
    , m_error(handle < 0 ? errno : 0)
{
}

Directory::~Directory()
{
    if (isOpen()) {
        close(m_handle);
    }
}

Directory Directory::notOpen(int error)
{
    Directory directory;
    directory.m_error = error;
    return directory;
}

Directory Directory::open(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    if (geteuid() == 0) {
        return Directory(walk(AT_FDCWD, name, Place::OnTheWay));
    }
    return Directory(::open(name.constData(), O_PATH | O_DIRECTORY | O_CLOEXEC));
}

Directory Directory::subdirectory(const QByteArray &name) const
{
    constexpr int flags = O_PATH | O_DIRECTORY | O_CLOEXEC;
    if (geteuid() != 0) {
        return Directory(openat(m_handle, name.constData(), flags));
    }
    Directory plain(openat(m_handle, name.constData(), flags | O_NOFOLLOW));
    return plain.isOpen() || plain.error() != ENOTDIR // as for a link
        ? std::move(plain)
        : Directory(walk(m_handle, name, Place::Below));
}

Directory Directory::makeSubdirectory(const QByteArray &name, mode_t mode) const
{
    if (isExposed()) { // made where nobody can exchange it, and renamed
        QByteArray workshopName;
        const Directory workshop = makePrivate(&workshopName);
        if (!workshop.isOpen()) {
            return notOpen(workshop.error());
        }
        Directory made = workshop.makeSubdirectory(name, mode);
        if (renameat(workshop.m_handle, name.constData(), m_handle, name.constData()) != 0) {
            made = notOpen(errno);
            unlinkat(workshop.m_handle, name.constData(), AT_REMOVEDIR);
        }
        unlinkat(m_handle, workshopName.constData(), AT_REMOVEDIR);
        return made;
    }
    if (mkdirat(m_handle, name.constData(), mode | S_IRWXU) != 0) {
        return Directory(-1);
    }
    const int handle =
        openat(m_handle, name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (handle >= 0 && geteuid() == 0) {
        fchmod(handle, mode | S_IRWXU);
    }
    return Directory(handle);
}

Directory Directory::makePrivate(QByteArray *name) const
{
    for (int i = 0; i < mostNames; ++i) {
        *name = randomName(InstalledFiles::unfinishedCopy);
        if (mkdirat(m_handle, name->constData(), S_IRWXU) == 0) {
            Directory made(
                openat(m_handle, name->constData(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
            // Who owns the directory around it may have put another one in its place.
            return made.isOpen() && !made.isExposed() ? std::move(made) : notOpen(EACCES);
        }
        if (errno != EEXIST) {
            break;
        }
    }
    return Directory(-1);
}

Directory::Identity Directory::identity() const
{
    struct stat status { };
    if (fstat(m_handle, &status) != 0) {
        return {};
    }
    return {status.st_dev, status.st_ino};
}

bool Directory::isExposed() const
{
    struct stat status { };
    if (geteuid() != 0 || fstat(m_handle, &status) != 0) {
        return false;
    }
    const bool isWritable =
        (status.st_mode & S_IWOTH) != 0 || ((status.st_mode & S_IWGRP) != 0 && status.st_gid != 0);
    return status.st_uid != 0 || (isWritable && (status.st_mode & S_ISVTX) == 0);
}

QString Directory::canonicalPath() const
{
    char target[PATH_MAX];
    const ssize_t length =
        readlink(descriptorPath(m_handle).toLatin1().constData(), target, sizeof target);
    return QFile::decodeName(QByteArray(target, static_cast<int>(std::max<ssize_t>(length, 0))));
}

QString Directory::path() const
{
    const QString canonical = canonicalPath();
    bool isExposedOnTheWay = isExposed();
    for (QString above = canonical; above.size() > 1 && !isExposedOnTheWay;) {
        above = QFileInfo(above).path();
        isExposedOnTheWay = open(above).isExposed();
    }
    return isExposedOnTheWay ? descriptorPath(m_handle) : canonical;
}

QString Directory::pathBelow(const QString &parentPath) const
{
    const QString canonical = canonicalPath();
    const bool isPlain = QFileInfo(canonical).path() == parentPath;
    return isPlain && !isExposed() ? canonical : path();
}

WrittenFile writeFile(
    const Directory &directory, const QByteArray &name, const QByteArray &content, mode_t mode)
{
    constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    QByteArray beside;
    int handle = -1;
    for (int i = 0; i < mostNames && handle < 0; ++i) {
        beside = randomName('.' + name);
        handle = openat(directory.handle(), beside.constData(), flags, S_IRUSR | S_IWUSR);
        if (handle < 0 && errno != EEXIST) {
            return overwrite(directory, name, content);
        }
    }
    if (handle < 0) {
        return {};
    }
    WrittenFile result;
    result.isOpened = true;
    const bool isComplete = writeAll(handle, content) && fchmod(handle, mode) == 0;
    if (close(handle) == 0 && isComplete) {
        result.isWritten =
            renameat(directory.handle(), beside.constData(), directory.handle(), name.constData())
            == 0;
        result.isOpened = result.isWritten;
    }
    if (!result.isWritten) {
        unlinkat(directory.handle(), beside.constData(), 0);
    }
    return result;
}
