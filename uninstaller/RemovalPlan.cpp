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
// the installer's writer, which hides it, and the installer's copy, which hides it in a directory.
QByteArrayList unfinishedFiles(const DirectoryTree &tree)
{
    static const QRegularExpression beside(
        QStringLiteral("^(?:(.+)\\.[A-Za-z]{6}|\\.(.+)\\.[0-9a-z]{1,13})$"));
    static const QRegularExpression copied(
        QStringLiteral("(?:^|/)%1\\.[0-9a-z]{1,13}/[^/]*$")
            .arg(QRegularExpression::escape(QLatin1String(InstalledFiles::unfinishedCopy))));
    const QByteArrayList written = listOf(writtenLater) + listOf(launchers);
    const DirectoryTree::Contents contents = tree.contents();
    QByteArrayList unfinished;
    for (const QByteArray &path : contents.files) {
        const QString name = QString::fromLatin1(path);
        const auto match = beside.match(name);
        const QByteArray original = (match.captured(1) + match.captured(2)).toLatin1();
        if (written.contains(original) || copied.match(name).hasMatch()) {
            unfinished.append(path);
        }
    }
    for (const QByteArray &directory : contents.emptyDirectories) {
        if (copied.match(QString::fromLatin1(directory)).hasMatch()) {
            unfinished.append(directory + "copy"); // it would be in there, and takes it along
        }
    }
    return unfinished;
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
