#include "uninstaller/DirectoryTree.h"

#include <QFile>
#include <QList>

#include <algorithm>
#include <cerrno>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

class Descriptor {
public:
    explicit Descriptor(int number)
        : m_number(number)
    {
    }
    Descriptor(Descriptor &&other) noexcept
        : m_number(std::exchange(other.m_number, -1))
    {
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    Descriptor &operator=(Descriptor &&other) noexcept
    {
        std::swap(m_number, other.m_number);
        return *this;
    }
    ~Descriptor()
    {
        if (isOpen()) {
            close(m_number);
        }
    }

    bool isOpen() const { return m_number >= 0; }
    int number() const { return m_number; }
    int release() { return std::exchange(m_number, -1); }

private:
    int m_number;
};

constexpr int asDirectory = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
constexpr int asPlace = O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

// The open directory that the last part of the path is in. When that fails, errno tells why.
Descriptor openParent(const QByteArray &top, const QList<QByteArray> &parts)
{
    Descriptor place(open(top.constData(), asPlace));
    for (int i = 0; place.isOpen() && i + 1 < parts.size(); ++i) {
        place = Descriptor(openat(place.number(), parts[i].constData(), asPlace));
    }
    return place;
}

bool isPlainPart(const QByteArray &part)
{
    return !part.isEmpty() && part != "." && part != ".." && !part.contains('\0');
}

QByteArray parentOf(const QByteArray &path) { return path.left(qMax(0, path.lastIndexOf('/'))); }

template <typename Visit> void forEachParent(QByteArray path, Visit visit)
{
    while (!path.isEmpty()) {
        path = parentOf(path);
        visit(path);
    }
}

struct Contents {
    QList<QByteArray> files; // whatever is no directory; a directory that was not entered ends in /
    QList<QByteArray> directories; // each after those below it
};

// Takes over the descriptor.
QList<QByteArray> namesIn(Descriptor directory)
{
    QList<QByteArray> names;
    const std::unique_ptr<DIR, int (*)(DIR *)> stream(fdopendir(directory.number()), closedir);
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

void readContents(int place, const QByteArray &path, dev_t device, Contents &contents)
{
    const QList<QByteArray> names = namesIn(Descriptor(openat(place, ".", asDirectory)));
    for (const QByteArray &name : names) {
        const QByteArray inTop = path.isEmpty() ? name : path + '/' + name;
        struct stat status = {};
        if (fstatat(place, name.constData(), &status, AT_SYMLINK_NOFOLLOW) != 0
            || !S_ISDIR(status.st_mode)) {
            contents.files.append(inTop);
            continue;
        }
        const Descriptor below(openat(place, name.constData(), asDirectory));
        if (!below.isOpen() || status.st_dev != device) {
            contents.files.append(inTop + '/');
            continue;
        }
        readContents(below.number(), inTop, device, contents);
        contents.directories.append(inTop);
    }
}

} // namespace

DirectoryTree::DirectoryTree(const QString &top)
    : m_top(QFile::encodeName(top))
{
}

bool DirectoryTree::removeFile(const QByteArray &path)
{
    const QList<QByteArray> parts = path.split('/');
    if (!std::all_of(parts.cbegin(), parts.cend(), isPlainPart)) {
        return false;
    }
    forEachParent(path, [this](const QByteArray &parent) { m_ours.insert(parent); });
    const Descriptor place = openParent(m_top, parts);
    if (!place.isOpen()) {
        return errno == ENOENT;
    }
    struct stat status = {};
    if (fstatat(place.number(), parts.last().constData(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
        return errno == ENOENT;
    }
    return !S_ISREG(status.st_mode) || unlinkat(place.number(), parts.last().constData(), 0) == 0;
}

QStringList DirectoryTree::removeEmptyDirectories()
{
    Contents contents;
    QStringList failed;
    m_left.clear();
    {
        const Descriptor top(open(m_top.constData(), asDirectory));
        struct stat status = {};
        if (!top.isOpen() || fstat(top.number(), &status) != 0) {
            return failed;
        }
        readContents(top.number(), QByteArray(), status.st_dev, contents);
    }

    QSet<QByteArray> occupied;
    const auto occupy = [&occupied](const QByteArray &parent) { occupied.insert(parent); };
    for (const QByteArray &file : qAsConst(contents.files)) {
        m_left.append(QFile::decodeName(file));
        forEachParent(file.endsWith('/') ? file.chopped(1) : file, occupy);
    }
    for (const QByteArray &directory : qAsConst(contents.directories)) {
        if (occupied.contains(directory)) {
            continue;
        }
        const bool mayGo = contents.files.isEmpty() || m_ours.contains(directory);
        const QList<QByteArray> parts = directory.split('/');
        const Descriptor place = openParent(m_top, parts);
        if (mayGo && unlinkat(place.number(), parts.last().constData(), AT_REMOVEDIR) == 0) {
            continue;
        }
        (mayGo ? failed : m_left).append(QFile::decodeName(directory) + QLatin1Char('/'));
        forEachParent(directory, occupy);
    }
    if (!occupied.contains(QByteArray()) && rmdir(m_top.constData()) != 0) {
        failed.append(QFile::decodeName(m_top) + QLatin1Char('/'));
    }
    m_left.sort();
    return failed;
}
