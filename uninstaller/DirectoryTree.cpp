#include "uninstaller/DirectoryTree.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int asDirectory = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
constexpr int asPlace = O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
constexpr int asFile = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC; // a pipe does not block
constexpr int longestPath = 4096; // bytes, as the system has it

// Opens a path step by step, none of which may be a link.
Descriptor openWithoutLinks(const QByteArray &path)
{
    Descriptor place(open("/", asPlace));
    const QByteArrayList parts = path.split('/');
    for (const QByteArray &part : parts) {
        if (place.isOpen() && !part.isEmpty()) {
            place = Descriptor(openat(place.number(), part.constData(), asPlace));
        }
    }
    return place;
}

bool isPlainPart(const QByteArray &part)
{
    return !part.isEmpty() && part != "." && part != ".." && !part.contains('\0');
}

bool isRegularFile(int place, const QByteArray &name)
{
    struct stat status = {};
    return fstatat(place, name.constData(), &status, AT_SYMLINK_NOFOLLOW) == 0
        && S_ISREG(status.st_mode);
}

// The same file system can be mounted twice: then only the number of the mount tells.
bool areOnOneMount(int first, int second)
{
    struct statx one = {};
    struct statx other = {};
    return statx(first, "", AT_EMPTY_PATH, STATX_MNT_ID, &one) == 0
        && statx(second, "", AT_EMPTY_PATH, STATX_MNT_ID, &other) == 0
        && one.stx_dev_major == other.stx_dev_major && one.stx_dev_minor == other.stx_dev_minor
        && one.stx_mnt_id == other.stx_mnt_id;
}

QByteArrayList namesIn(int place)
{
    QByteArrayList names;
    Descriptor directory(openat(place, ".", asDirectory));
    const std::unique_ptr<DIR, int (*)(DIR *)> stream(
        directory.isOpen() ? fdopendir(directory.number()) : nullptr, closedir);
    if (!stream) {
        return names;
    }
    directory.release();
    while (const dirent *entry = readdir(stream.get())) { // NOLINT(concurrency-mt-unsafe)
        const QByteArray name(entry->d_name);
        if (name != "." && name != "..") {
            names.append(name);
        }
    }
    return names;
}

// Not open when it is no directory. What may not be entered has a descriptor that reads nothing.
Descriptor openToEnter(int place, const QByteArray &name, int level, bool *mayEnter)
{
    Descriptor found(openat(place, name.constData(), asPlace));
    *mayEnter = found.isOpen() && level < DirectoryTree::mostLevels
        && faccessat(found.number(), ".", R_OK | X_OK, AT_EACCESS) == 0
        && areOnOneMount(place, found.number());
    return found;
}

void readContents(int place, const QByteArray &path, int level, DirectoryTree::Contents &contents)
{
    const QByteArrayList names = namesIn(place);
    if (names.isEmpty() && !path.isEmpty()) {
        contents.emptyDirectories.append(path);
    }
    for (const QByteArray &name : names) {
        bool mayEnter = false;
        const Descriptor below = openToEnter(place, name, level, &mayEnter);
        if (mayEnter) {
            readContents(below.number(), path + name + '/', level + 1, contents);
        } else if (below.isOpen()) {
            contents.closedDirectories.append(path + name + '/');
        } else {
            contents.files.append(path + name);
        }
    }
}

void removeEmptyBelow(int place, int level)
{
    const QByteArrayList names = namesIn(place);
    for (const QByteArray &name : names) {
        bool mayEnter = false;
        const Descriptor below = openToEnter(place, name, level, &mayEnter);
        if (mayEnter) {
            removeEmptyBelow(below.number(), level + 1);
            unlinkat(place, name.constData(), AT_REMOVEDIR);
        }
    }
}

} // namespace

Descriptor &Descriptor::operator=(Descriptor &&other) noexcept
{
    std::swap(m_number, other.m_number);
    return *this;
}

Descriptor::~Descriptor()
{
    if (isOpen()) {
        const int error = errno; // of the call that the caller asks about
        close(m_number);
        errno = error;
    }
}

int Descriptor::release() { return std::exchange(m_number, -1); }

DirectoryTree::DirectoryTree(const QString &top)
    : m_name(QFile::encodeName(top.section(QLatin1Char('/'), -1)))
    , m_top(top.isEmpty() ? Descriptor(-1) : openWithoutLinks(QFile::encodeName(top)))
    , m_error(top.isEmpty() ? ENOENT : errno)
{
}

// The open directory that the last part of the path is in. When that fails, errno tells why.
Descriptor DirectoryTree::openParent(const QByteArrayList &parts) const
{
    Descriptor place(openat(m_top.number(), ".", asPlace));
    for (int i = 0; place.isOpen() && i + 1 < parts.size(); ++i) {
        Descriptor next(openat(place.number(), parts[i].constData(), asPlace));
        if (next.isOpen() && !areOnOneMount(place.number(), next.number())) {
            errno = EXDEV;
            return Descriptor(-1);
        }
        place = std::move(next);
    }
    return place;
}

std::optional<QByteArray> DirectoryTree::read(const char *name, qint64 mostBytes) const
{
    Descriptor descriptor(openat(m_top.number(), name, asFile));
    struct stat status = {};
    if (!descriptor.isOpen() || fstat(descriptor.number(), &status) != 0) {
        return std::nullopt;
    }
    QFile file;
    if (!S_ISREG(status.st_mode)
        || !file.open(descriptor.release(), QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        errno = EINVAL;
        return std::nullopt;
    }
    QByteArray content = file.read(mostBytes + 1); // it may grow meanwhile
    if (content.size() > mostBytes) {
        errno = EFBIG;
        return std::nullopt;
    }
    return content;
}

int DirectoryTree::removeFile(const QByteArray &path) const
{
    const QByteArrayList parts = path.size() < longestPath ? path.split('/') : QByteArrayList();
    if (parts.isEmpty() || !std::all_of(parts.cbegin(), parts.cend(), isPlainPart)) {
        return EINVAL;
    }
    const Descriptor place = openParent(parts);
    if (!place.isOpen()) {
        return errno == ENOENT ? 0 : errno;
    }
    const QByteArray &name = parts.last();
    const bool isThere = isRegularFile(place.number(), name);
    return isThere && unlinkat(place.number(), name.constData(), 0) != 0 ? errno : 0;
}

DirectoryTree::Refusal DirectoryTree::removeEmptyParents(const QByteArray &path) const
{
    QByteArrayList parts = path.size() < longestPath ? path.split('/') : QByteArrayList();
    if (!std::all_of(parts.cbegin(), parts.cend(), isPlainPart)) {
        return {};
    }
    while (parts.size() > 1) {
        parts.removeLast();
        const Descriptor place = openParent(parts);
        if (!place.isOpen() || unlinkat(place.number(), parts.last().constData(), AT_REMOVEDIR) == 0
            || errno == ENOENT) {
            continue;
        }
        return {parts.join('/') + '/', errno};
    }
    return {};
}

DirectoryTree::Contents DirectoryTree::contents() const
{
    Contents contents;
    readContents(m_top.number(), QByteArray(), 0, contents);
    return contents;
}

void DirectoryTree::removeEmptyDirectories() const { removeEmptyBelow(m_top.number(), 0); }

// The name can be taken by another directory meanwhile, which then has to be empty to go: nothing
// of its owner's is lost. The parent is that of the open directory, wherever it is by now.
int DirectoryTree::removeTop() const
{
    const Descriptor parent(openat(m_top.number(), "..", asPlace));
    struct stat ours = {};
    struct stat named = {};
    if (!parent.isOpen() || fstat(m_top.number(), &ours) != 0
        || fstatat(parent.number(), m_name.constData(), &named, AT_SYMLINK_NOFOLLOW) != 0) {
        return errno;
    }
    if (ours.st_dev != named.st_dev || ours.st_ino != named.st_ino) {
        return ENOTDIR;
    }
    return unlinkat(parent.number(), m_name.constData(), AT_REMOVEDIR) == 0 ? 0 : errno;
}
