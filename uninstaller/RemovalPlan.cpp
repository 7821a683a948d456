#include "uninstaller/RemovalPlan.h"

#include "base/InstalledFiles.h"
#include "uninstaller/DirectoryTree.h"

#include <QRegularExpression>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <utility>
#include <vector>

namespace {

constexpr const char *launchers[] = {
    InstalledFiles::clientLauncher, InstalledFiles::uninstallLauncher};

// What the programs write into the directory. "log.txt" is not among them: any file may have that
// name, and the delivered programs write none.
constexpr const char *writtenLater[] = {InstalledFiles::previousManifest, InstalledFiles::settings,
    InstalledFiles::commonUsedLines, InstalledFiles::versionInfo, InstalledFiles::updateInfo,
    InstalledFiles::errorLog};

// What is not here goes before all of it. A name with "/" stands for all that is below it.
constexpr const char *later[] = {
    InstalledFiles::clientLauncher,
    InstalledFiles::installer,
    InstalledFiles::startScript,
    "qml/",
    "plugins/",
    "lib/",
    InstalledFiles::qtConfiguration,
    InstalledFiles::uninstallLauncher, // RemovalPlan::last from here on
    InstalledFiles::uninstaller,
    InstalledFiles::previousManifest,
    InstalledFiles::manifest,
};

// -1: before all rows.
int rowOf(const QByteArray &path)
{
    const auto *const found =
        std::find_if(std::begin(later), std::end(later), [&path](const QByteArray &row) {
            return path == row || (row.endsWith('/') && path.startsWith(row));
        });
    return found == std::end(later) ? -1 : int(std::distance(std::begin(later), found));
}

template <std::size_t size> QByteArrayList listOf(const char *const (&names)[size])
{
    return QByteArrayList(std::begin(names), std::end(names));
}

// Adds the lines of a manifest. Returns 0, or the reason why it cannot be read.
int addLines(const DirectoryTree &tree, const char *manifest, QByteArrayList &paths)
{
    const auto content = tree.read(manifest, InstalledFiles::largestManifest);
    if (!content) {
        return errno;
    }
    paths += content->split('\n');
    paths.removeAll(QByteArray());
    return 0;
}

// Left behind by writers that were killed before they had put their file in its place: QSaveFile,
// and the installer's writer, which hides it.
QByteArrayList unfinishedFiles(const DirectoryTree &tree)
{
    static const QRegularExpression pattern(
        QStringLiteral("^(?:(.+)\\.[A-Za-z]{6}|\\.(.+)\\.[0-9a-z]{1,13})$"));
    const QByteArrayList written = listOf(writtenLater) + listOf(launchers);
    QByteArrayList names = tree.ownFiles();
    const auto end = std::remove_if(names.begin(), names.end(), [&written](const QByteArray &name) {
        const auto match = pattern.match(QString::fromLatin1(name));
        return !written.contains((match.captured(1) + match.captured(2)).toLatin1());
    });
    names.erase(end, names.end());
    return names;
}

} // namespace

RemovalPlan RemovalPlan::of(const DirectoryTree &tree)
{
    RemovalPlan plan;
    QByteArrayList paths = listOf(launchers);
    plan.manifestError = addLines(tree, InstalledFiles::manifest, paths);
    if (plan.manifestError == 0) {
        const int error = addLines(tree, InstalledFiles::previousManifest, paths);
        plan.previousManifestError = error == ENOENT ? 0 : error;
        paths += listOf(writtenLater) + unfinishedFiles(tree);
        paths += InstalledFiles::manifest;
    }

    std::vector<std::pair<int, QByteArray>> ranked;
    ranked.reserve(static_cast<std::size_t>(paths.size()));
    for (const QByteArray &path : qAsConst(paths)) {
        ranked.emplace_back(rowOf(path), path);
    }
    std::sort(ranked.begin(), ranked.end());
    ranked.erase(std::unique(ranked.begin(), ranked.end()), ranked.end());

    const int firstOfLast = rowOf(InstalledFiles::uninstallLauncher);
    for (const auto &[row, path] : ranked) {
        (row < firstOfLast ? plan.first : plan.last).append(path);
    }
    return plan;
}
