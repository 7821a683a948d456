#include "installer/CopyReport.h"

#include "installer/ShownPath.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <iterator>

namespace {

QString translated(const char *text) { return QCoreApplication::translate("main", text); }

constexpr char unknownReason[] = QT_TRANSLATE_NOOP("main", "unknown reason");
constexpr char noRights[] = QT_TRANSLATE_NOOP("main", "no rights");
constexpr char noRoom[] = QT_TRANSLATE_NOOP("main", "no room on the disk");
constexpr char noDirectory[] = QT_TRANSLATE_NOOP("main", "no such directory");
constexpr char nameIsTaken[] = QT_TRANSLATE_NOOP("main", "something else has this name");

constexpr struct {
    int error;
    const char *text;
} reasons[] = {
    {EACCES, noRights},
    {EPERM, noRights},
    {EROFS, QT_TRANSLATE_NOOP("main", "the disk is read-only")},
    {ENOSPC, noRoom},
    {EDQUOT, noRoom},
    {ENOENT, noDirectory},
    {EEXIST, nameIsTaken},
    {ENOTDIR, nameIsTaken},
    {EISDIR, nameIsTaken},
    {ELOOP, QT_TRANSLATE_NOOP("main", "a link of somebody else has this name")},
    {EINVAL, QT_TRANSLATE_NOOP("main", "not a regular file")},
    {EILSEQ, QT_TRANSLATE_NOOP("main", "a name in it is no text")},
};

const char *reason(int error)
{
    const auto *const found = std::find_if(std::begin(reasons), std::end(reasons),
        [error](const auto &row) { return row.error == error; });
    return found == std::end(reasons) ? unknownReason : found->text;
}

int countFiles(const QString &directory)
{
    int count = 0;
    QDirIterator files(
        directory, QDir::Files, QDirIterator::Subdirectories | QDirIterator::FollowSymlinks);
    while (files.hasNext()) {
        files.next();
        ++count;
    }
    return count;
}

QString whatFailed(const CopyOutcome &outcome)
{
    const QString why = translated(reason(outcome.error));
    const QString directory = shownPath(QFileInfo(outcome.directory).absoluteFilePath());
    const QString name = shownPath(outcome.name);
    const QString path = name.isEmpty() ? directory : directory + QLatin1Char('/') + name;
    if (outcome.failed == CopyOutcome::Read || outcome.failed == CopyOutcome::ReadDirectory) {
        return translated(QT_TRANSLATE_NOOP("main", "“%1” could not be read: %2.")).arg(path, why);
    }
    if (outcome.failed == CopyOutcome::MakeDirectory || name.isEmpty()) {
        return translated(QT_TRANSLATE_NOOP("main", "“%1” could not be created: %2."))
            .arg(path, why);
    }
    return translated(QT_TRANSLATE_NOOP("main", "“%1” could not be written to “%2”: %3."))
        .arg(name, directory, why);
}

} // namespace

QString copyReport(const CopyOutcome &outcome, const QString &fromDir)
{
    if (outcome.isCopied()) {
        return {};
    }
    const int all = std::max(countFiles(fromDir), outcome.files + 1);
    const QString howMuch = translated(QT_TRANSLATE_NOOP("main", "Not copied: %1 of %2 files."))
                                .arg(QString::number(all - outcome.files), QString::number(all));
    return whatFailed(outcome) + QLatin1Char(' ') + howMuch;
}
