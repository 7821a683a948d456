#include "settings/ReplacedFile.h"

#include "base/Directory.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <ctime>
#include <optional>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int suffixLength = 6; // of a temporary file's name, behind a dot

using Status = struct stat;

std::optional<Status> statusAt(int directory, const QByteArray &name)
{
    Status status{};
    const bool isThere = fstatat(directory, name.constData(), &status, AT_SYMLINK_NOFOLLOW) == 0;
    return isThere ? std::make_optional(status) : std::nullopt;
}

bool isOthersLink(const Status &status)
{
    return S_ISLNK(status.st_mode) && status.st_uid != 0 && status.st_uid != geteuid();
}

// Where the file lies: a link that may be followed leads there.
QString placeOf(const QString &path)
{
    const auto status = statusAt(AT_FDCWD, QFile::encodeName(path));
    const bool isFollowed = status && S_ISLNK(status->st_mode) && !isOthersLink(*status);
    return isFollowed ? QFileInfo(path).canonicalFilePath() : path;
}

QByteArray contentOf(int file)
{
    Status status{};
    if (fstat(file, &status) != 0 || status.st_size > ReplacedFile::longest) {
        return {};
    }
    QByteArray content(static_cast<int>(status.st_size), Qt::Uninitialized);
    const ssize_t length = pread(file, content.data(), static_cast<std::size_t>(content.size()), 0);
    content.truncate(static_cast<int>(std::max<ssize_t>(length, 0)));
    return content;
}

bool overwrite(const Directory &directory, const QByteArray &name, const QByteArray &content)
{
    constexpr int flags = O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    QFile file; // closes the handle
    const int handle = openat(directory.handle(), name.constData(), flags);
    if (handle == -1 || !file.open(handle, QIODevice::ReadWrite, QFile::AutoCloseHandle)) {
        return false;
    }
    const QByteArray before = contentOf(handle);
    if (ftruncate(handle, 0) == 0 && writeAll(handle, content)) {
        return true;
    }
    // Emptying it made room for what it held.
    if (ftruncate(handle, 0) == 0 && lseek(handle, 0, SEEK_SET) == 0) {
        writeAll(handle, before);
    }
    return false;
}

QByteArray temporaryName(const QByteArray &name)
{
    QByteArray suffix;
    while (suffix.size() < suffixLength) {
        suffix += static_cast<char>('A' + QRandomGenerator::global()->bounded(26));
    }
    return name + '.' + suffix;
}

bool isTemporaryNameOf(const QByteArray &name, const QByteArray &candidate)
{
    return candidate.size() == name.size() + 1 + suffixLength && candidate.startsWith(name + '.')
        && std::all_of(candidate.cend() - suffixLength, candidate.cend(), [](char character) {
               return (character >= 'A' && character <= 'Z')
                   || (character >= 'a' && character <= 'z');
           });
}

// A writer that still runs holds a lock on its file. It is without one for a moment, while the file
// is empty.
bool isAbandoned(int handle)
{
    constexpr int moment = 10; // seconds
    Status status{};
    const bool isOurs = fstat(handle, &status) == 0 && S_ISREG(status.st_mode)
        && (status.st_uid == geteuid() || geteuid() == 0);
    const bool isNew = status.st_size == 0 && std::time(nullptr) - status.st_mtime < moment;
    return isOurs && !isNew && flock(handle, LOCK_EX | LOCK_NB) == 0;
}

void sweep(const Directory &directory, const QByteArray &name)
{
    const int list = openat(directory.handle(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    DIR *const entries = list == -1 ? nullptr : fdopendir(list);
    if (entries == nullptr) {
        return;
    }
    while (const dirent *entry = readdir(entries)) {
        if (!isTemporaryNameOf(name, entry->d_name)) {
            continue;
        }
        const int handle = openat(
            directory.handle(), entry->d_name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
        if (handle != -1 && isAbandoned(handle)) {
            unlinkat(directory.handle(), entry->d_name, 0);
        }
        if (handle != -1) {
            close(handle);
        }
    }
    closedir(entries);
}

// A pipe does not keep its reader waiting, and a terminal does not become the program's.
constexpr int readingFlags = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

// The link is held while it is looked at and read, so that nobody puts another one in its place.
int openLinkedFile(const Directory &directory, const QByteArray &name)
{
    const int link = openat(directory.handle(), name.constData(), O_PATH | O_NOFOLLOW | O_CLOEXEC);
    if (link == -1) {
        return -1;
    }
    Status status{};
    QByteArray target(PATH_MAX, '\0');
    const bool isFollowed = fstat(link, &status) == 0 && !isOthersLink(status)
        && readlinkat(link, "", target.data(), PATH_MAX - 1) > 0;
    close(link);
    return isFollowed ? openat(directory.handle(), target.constData(), readingFlags) : -1;
}

void keepOwner(const Directory &directory, const std::optional<Status> &previous, int file)
{
    const auto around = statusAt(directory.handle(), ".");
    if (previous && S_ISREG(previous->st_mode) && around && around->st_uid == previous->st_uid) {
        [[maybe_unused]] const int ignored = fchown(file, previous->st_uid, previous->st_gid);
    }
}

} // namespace

bool ReplacedFile::openToRead(const QString &path, QFile &file)
{
    const QFileInfo place(path);
    const QByteArray name = QFile::encodeName(place.fileName());
    const Directory directory = Directory::open(place.path());
    if (name.isEmpty() || !directory.isOpen()) {
        return false;
    }
    int handle = openat(directory.handle(), name.constData(), readingFlags | O_NOFOLLOW);
    if (handle == -1 && errno == ELOOP) {
        handle = openLinkedFile(directory, name);
    }
    Status status{};
    if (handle != -1 && fstat(handle, &status) == 0 && S_ISREG(status.st_mode)) {
        return file.open(handle, QIODevice::ReadOnly, QFile::AutoCloseHandle);
    }
    if (handle != -1) {
        close(handle);
    }
    return false;
}

bool ReplacedFile::write(const QString &path, const QByteArray &content, mode_t mode)
{
    const QFileInfo place(placeOf(path));
    const QByteArray name = QFile::encodeName(place.fileName());
    const Directory directory = Directory::open(place.path());
    if (name.isEmpty() || !directory.isOpen()) {
        return false;
    }
    const auto previous = statusAt(directory.handle(), name);
    if (previous && !S_ISREG(previous->st_mode) && !isOthersLink(*previous)) {
        return false;
    }
    sweep(directory, name);

    constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    const QByteArray beside = temporaryName(name);
    const int handle = openat(directory.handle(), beside.constData(), flags, S_IRUSR | S_IWUSR);
    if (handle == -1) {
        return previous && overwrite(directory, name, content);
    }
    flock(handle, LOCK_EX | LOCK_NB);
    keepOwner(directory, previous, handle);
    const bool isComplete =
        fchmod(handle, mode) == 0 && writeAll(handle, content) && fsync(handle) == 0;
    const bool isInPlace = isComplete
        && renameat(directory.handle(), beside.constData(), directory.handle(), name.constData())
            == 0;
    if (!isInPlace) {
        unlinkat(directory.handle(), beside.constData(), 0);
    }
    close(handle);
    return isInPlace;
}
