#include "uninstaller/Removal.h"

#include "base/InstalledFiles.h"
#include "uninstaller/DirectoryTree.h"
#include "uninstaller/MenuEntry.h"
#include "uninstaller/RemovalPlan.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSet>

#include <algorithm>
#include <cerrno>
#include <cstdio>

namespace {

class PercentageTeller {
public:
    PercentageTeller(const Removal::Progress &tell, int steps)
        : m_tell(tell)
        , m_steps(steps)
    {
    }

    void step()
    {
        const int percentage = static_cast<int>(++m_done * 100 / m_steps);
        if (percentage != m_told) {
            m_told = percentage;
            m_tell(percentage);
        }
    }

private:
    const Removal::Progress &m_tell;
    qint64 m_steps;
    qint64 m_done = 0;
    int m_told = 0;
};

// One run of a plan, from its files to the directory itself.
class Run {
public:
    Run(const DirectoryTree &tree, const RemovalPlan &plan, RemovalReport &report)
        : m_tree(tree)
        , m_plan(plan)
        , m_report(report)
    {
    }

    void remove(const Removal::Progress &progress)
    {
        PercentageTeller teller(progress, m_plan.first.size() + m_plan.last.size() + 1);
        tellOfManifests();
        removeFiles(m_plan.first, teller);
        const bool isEmpty = removeDirectories();
        removeFiles(m_plan.last, teller);
        const int error = isEmpty ? m_tree.removeTop() : 0;
        if (error != 0 && error != ENOTEMPTY) {
            fail("./", error);
        }
    }

private:
    void fail(const QByteArray &name, int error)
    {
        m_failed.insert(name);
        m_report.failed.append({QFile::decodeName(name), error});
    }

    void tellOfManifests()
    {
        if (m_plan.previousManifestError != 0) {
            fail(InstalledFiles::previousManifest, m_plan.previousManifestError);
        }
        // A run that was stopped when it had all but the directory itself left no manifest.
        const DirectoryTree::Contents contents = m_tree.contents();
        const bool isBare = contents.files.isEmpty() && contents.closedDirectories.isEmpty();
        if (m_plan.manifestError != 0 && !isBare) {
            fail(InstalledFiles::manifest, m_plan.manifestError);
        }
    }

    void removeFiles(const QByteArrayList &paths, PercentageTeller &teller)
    {
        for (const QByteArray &path : paths) {
            if (const int error = m_tree.removeFile(path)) {
                fail(path, error);
            }
            teller.step();
        }
    }

    // True when nothing is left but the last files of the plan.
    bool removeDirectories()
    {
        QHash<QByteArray, int> refusals;
        for (const QByteArray &path : m_plan.first) {
            const auto refusal = m_tree.removeEmptyParents(path);
            if (refusal.error != 0) {
                refusals.insert(refusal.directory, refusal.error);
            }
        }
        DirectoryTree::Contents left = contentsWithoutLast();
        // An empty directory beside files of others may be theirs.
        if (left.files.isEmpty() && left.closedDirectories.isEmpty()) {
            m_tree.removeEmptyDirectories();
            left = contentsWithoutLast();
        }
        for (const QByteArray &directory : qAsConst(left.emptyDirectories)) {
            if (refusals.contains(directory)) {
                fail(directory, refusals.value(directory));
            }
        }
        const QByteArrayList stayed = left.files + left.emptyDirectories + left.closedDirectories;
        tellOfStayed(stayed);
        return stayed.isEmpty();
    }

    DirectoryTree::Contents contentsWithoutLast() const
    {
        DirectoryTree::Contents contents = m_tree.contents();
        const auto end = std::remove_if(contents.files.begin(), contents.files.end(),
            [this](const QByteArray &path) { return m_plan.last.contains(path); });
        contents.files.erase(end, contents.files.end());
        return contents;
    }

    void tellOfStayed(QByteArrayList stayed)
    {
        std::sort(stayed.begin(), stayed.end());
        for (const QByteArray &name : qAsConst(stayed)) {
            if (m_failed.contains(name)) {
                continue;
            }
            if (m_plan.manifestError != 0) {
                fail(name, 0);
            } else {
                m_report.kept.append(QFile::decodeName(name));
            }
        }
    }

    const DirectoryTree &m_tree;
    const RemovalPlan &m_plan;
    RemovalReport &m_report;
    QSet<QByteArray> m_failed;
};

} // namespace

Removal::Removal(const QString &directory, const QStringList &desktopEntries)
    : m_directory(QFileInfo(directory).canonicalFilePath())
    , m_desktopEntries(desktopEntries)
{
}

RemovalReport Removal::run(const Progress &progress) const
{
    RemovalReport report;
    // While the directory still stands its other names can be told from those of other places.
    for (const QString &entry : m_desktopEntries) {
        if (MenuEntry::starts(entry, m_directory)
            && std::remove(QFile::encodeName(entry).constData()) != 0) {
            report.failed.append({entry, errno});
        }
    }
    const DirectoryTree tree(m_directory);
    if (!tree.isOpen()) {
        report.failed.append({QString::fromLatin1(InstalledFiles::manifest), tree.error()});
        return report;
    }
    Run(tree, RemovalPlan::of(tree), report).remove(progress);
    return report;
}

QStringList Removal::installedEntries()
{
    return {QString::fromLatin1(InstalledFiles::menuEntry),
        QString::fromLatin1(InstalledFiles::autostartEntry)};
}
