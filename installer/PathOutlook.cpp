#include "installer/PathOutlook.h"

#include "base/Directory.h"
#include "base/InstalledFiles.h"
#include "installer/ShownPath.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace {

constexpr qint64 blockSize = 4096; // a file takes whole ones
constexpr qint64 megabyte = 1'000'000;

enum class Kind { Directory, Other, DanglingLink, Missing, BelowAFile, Hidden, Unknown };

Kind kindOf(const QString &path)
{
    struct stat status { };
    const QByteArray name = QFile::encodeName(path);
    if (stat(name.constData(), &status) == 0) {
        return S_ISDIR(status.st_mode) ? Kind::Directory : Kind::Other;
    }
    switch (errno) {
    case ENOENT:
        return lstat(name.constData(), &status) == 0 ? Kind::DanglingLink : Kind::Missing;
    case ENOTDIR:
        return Kind::BelowAFile;
    case EACCES:
        return Kind::Hidden;
    default:
        return Kind::Unknown;
    }
}

QString parentOf(const QString &path)
{
    const int slash = path.lastIndexOf(QLatin1Char('/'));
    return slash <= 0 ? QStringLiteral("/") : path.left(slash);
}

PathOutlook::Finding findingOfRights(const QString &directory)
{
    const QByteArray name = QFile::encodeName(directory);
    if (faccessat(AT_FDCWD, name.constData(), W_OK | X_OK, AT_EACCESS) == 0) {
        return PathOutlook::Nothing;
    }
    if (errno == EACCES) {
        return geteuid() == 0 ? PathOutlook::NotWritable : PathOutlook::NeedsRights;
    }
    return errno == EROFS ? PathOutlook::NotWritable : PathOutlook::Nothing;
}

// What the file system will have to find room for: files that are replaced go first.
qint64 neededRoom(const QString &bundle, const QString &target)
{
    const auto wholeBlocks = [](qint64 size) {
        return (size + blockSize - 1) / blockSize * blockSize;
    };
    const QDir source(bundle);
    QDirIterator files(
        bundle, QDir::Files, QDirIterator::Subdirectories | QDirIterator::FollowSymlinks);
    qint64 needed = 0;
    while (files.hasNext()) {
        const QString path = source.relativeFilePath(files.next());
        const QFileInfo replaced(target + QLatin1Char('/') + path);
        needed += wholeBlocks(files.fileInfo().size())
            - (replaced.isFile() ? wholeBlocks(replaced.size()) : 0);
    }
    return needed;
}

// False when it cannot be known.
bool freeRoom(const QString &directory, qint64 *bytes)
{
    struct statvfs status { };
    if (statvfs(QFile::encodeName(directory).constData(), &status) != 0 || status.f_blocks == 0) {
        return false;
    }
    const auto blocks = geteuid() == 0 ? status.f_bfree : status.f_bavail;
    *bytes = static_cast<qint64>(blocks) * static_cast<qint64>(status.f_frsize);
    return true;
}

bool holdsInstallation(const QString &directory)
{
    const QString prefix = directory + QLatin1Char('/');
    return QFileInfo(prefix + QLatin1String(InstalledFiles::manifest)).isFile()
        || QFileInfo(prefix + QLatin1String(InstalledFiles::clientLauncher)).isFile();
}

// The target can be made or is there: what about rights and room, in this order?
void lookInside(
    PathOutlook *outlook, const QString &directory, const QString &target, const QString &bundle)
{
    outlook->finding = findingOfRights(directory);
    if (outlook->finding != PathOutlook::Nothing
        || Directory::Identity::of(target) == Directory::Identity::of(bundle)) {
        return;
    }
    outlook->neededBytes = neededRoom(bundle, target);
    if (freeRoom(directory, &outlook->freeBytes) && outlook->neededBytes > outlook->freeBytes) {
        outlook->finding = PathOutlook::TooLittleRoom;
    } else if (holdsInstallation(target)) {
        outlook->finding = PathOutlook::WillBeUpdated;
    }
}

void lookAt(PathOutlook *outlook, const QString &target, const QString &bundle)
{
    const QString parent = parentOf(target);
    switch (kindOf(target)) {
    case Kind::Directory:
        lookInside(outlook, target, target, bundle);
        break;
    case Kind::Missing:
        if (target.contains(QLatin1String("/.."))) {
            break; // it is made where its text leads, not where the links in it do
        }
        if (kindOf(parent) == Kind::Directory) {
            lookInside(outlook, parent, target, bundle);
        } else {
            outlook->finding = PathOutlook::NoParent;
            outlook->subject = parent;
        }
        break;
    case Kind::Other:
    case Kind::DanglingLink:
        outlook->finding = PathOutlook::NoDirectory;
        outlook->subject = target;
        break;
    case Kind::BelowAFile:
        outlook->finding = PathOutlook::NoDirectory;
        outlook->subject = parent;
        while (kindOf(outlook->subject) == Kind::BelowAFile) {
            outlook->subject = parentOf(outlook->subject);
        }
        break;
    case Kind::Hidden:
        outlook->finding = geteuid() == 0 ? PathOutlook::Nothing : PathOutlook::NeedsRights;
        break;
    case Kind::Unknown:
        break;
    }
}

QString translated(const char *text) { return QCoreApplication::translate("main", text); }

} // namespace

PathOutlook PathOutlook::of(const QString &path, const QString &bundle)
{
    PathOutlook outlook;
    QString target = path.trimmed();
    if (target.isEmpty() || target.contains(QChar(0))) {
        return outlook;
    }
    const QString here = QDir::currentPath();
    const bool isRelative = !target.startsWith(QLatin1Char('/'));
    if (isRelative) {
        target = here + QLatin1Char('/') + target;
        outlook.leadsTo = target;
    }
    while (target.size() > 1 && target.endsWith(QLatin1Char('/'))) {
        target.chop(1);
    }
    lookAt(&outlook, target, bundle);
    if (isRelative && outlook.subject.startsWith(here + QLatin1Char('/'))) {
        outlook.subject.remove(0, here.size() + 1);
    }
    QString nearest = target;
    while (nearest.size() > 1 && kindOf(nearest) != Kind::Directory) {
        nearest = parentOf(nearest);
    }
    if (!isRelative || nearest.size() > here.size()) {
        outlook.nearest = nearest;
    }
    return outlook;
}

QString PathOutlook::hint() const
{
    constexpr const char *texts[] = {
        "",
        QT_TRANSLATE_NOOP("main", "“%1” is not a directory."),
        QT_TRANSLATE_NOOP("main", "“%1” does not exist."),
        QT_TRANSLATE_NOOP("main", "Needs administrator rights."),
        QT_TRANSLATE_NOOP("main", "Nothing can be written there."),
        QT_TRANSLATE_NOOP("main", "Too little room: %1 MB needed, %2 MB free."),
        QT_TRANSLATE_NOOP("main", "The installation found there will be updated."),
    };
    QStringList sentences;
    if (!leadsTo.isEmpty()) {
        sentences +=
            translated(QT_TRANSLATE_NOOP("main", "Leads to “%1”.")).arg(shownPath(leadsTo));
    }
    if (finding == TooLittleRoom) {
        sentences += translated(texts[finding])
                         .arg(QString::number((neededBytes + megabyte - 1) / megabyte),
                             QString::number(freeBytes / megabyte));
    } else if (finding == NoDirectory || finding == NoParent) {
        sentences += translated(texts[finding]).arg(shownPath(subject));
    } else if (finding != Nothing) {
        sentences += translated(texts[finding]);
    }
    return sentences.join(QLatin1Char(' '));
}
