#include "uninstaller/Removal.h"

#include "uninstaller/DirectoryTree.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <optional>

namespace {

const QLatin1String manifestName("manifest.txt");

const char *const launchers[] = {"VornRun.sh", "UninstallRun.sh"};

// What the installer and the client write into the directory. "log.txt" is not among them: any
// file may have that name, and the delivered programs write none.
const char *const writtenLater[] = {
    "VornData.json", "CommonUsedLine.json", "VersionInfo.json", "UpdateInfo.json", "errorlog.txt"};

std::optional<QList<QByteArray>> readManifest(const QString &directory)
{
    const QString path = directory + QLatin1Char('/') + manifestName;
    QFile file(path);
    if (QFileInfo(path).isSymLink() || !file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    QList<QByteArray> lines = file.readAll().split('\n');
    lines.removeAll(QByteArray());
    return lines;
}

class PercentageTeller {
public:
    PercentageTeller(const Removal::Progress &tell, int steps)
        : m_tell(tell)
        , m_steps(steps)
    {
    }

    void step()
    {
        const int percentage = ++m_done * 100 / m_steps;
        if (percentage != m_told) {
            m_told = percentage;
            m_tell(percentage);
        }
    }

private:
    const Removal::Progress &m_tell;
    int m_steps;
    int m_done = 0;
    int m_told = 0;
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
        if (isOurs(entry) && !QFile::remove(entry)) {
            report.failed.append(entry);
        }
    }

    const std::optional<QList<QByteArray>> manifest = readManifest(m_directory);
    QList<QByteArray> paths(std::begin(launchers), std::end(launchers));
    if (manifest) {
        std::copy(std::begin(writtenLater), std::end(writtenLater), std::back_inserter(paths));
        paths += *manifest;
        // A removal that was cut short can be taken up again as long as the list is there.
        paths.removeAll(QByteArray(manifestName.data()));
        paths.append(QByteArray(manifestName.data()));
    } else {
        report.failed.append(manifestName);
    }

    DirectoryTree tree(m_directory);
    PercentageTeller teller(progress, paths.size() + 1);
    for (const QByteArray &path : qAsConst(paths)) {
        if (!tree.removeFile(path)) {
            report.failed.append(QFile::decodeName(path));
        }
        teller.step();
    }
    report.failed += tree.removeEmptyDirectories();
    const QStringList stayed = tree.left();
    for (const QString &left : stayed) {
        if (!report.failed.contains(left)) {
            (manifest ? report.kept : report.failed).append(left);
        }
    }
    return report;
}

QStringList Removal::installedEntries()
{
    return {QStringLiteral("/usr/share/applications/Vorn.desktop"),
        QStringLiteral("/etc/xdg/autostart/Vorn.desktop")};
}

// A second installation in another directory keeps its entries. The path stands in the entry as
// the user typed it, so it may go through links; one that was picked in the installer's folder
// dialog lacks the leading "/".
bool Removal::isOurs(const QString &desktopEntry) const
{
    constexpr qint64 longestEntry = 65536;
    QFile file(desktopEntry);
    if (!QFileInfo(desktopEntry).isFile() || !file.open(QIODevice::ReadOnly)) {
        return false;
    }
    const QStringList lines = QString::fromUtf8(file.read(longestEntry)).split(QLatin1Char('\n'));
    const QString key = QStringLiteral("Exec=");
    const QString launcher = QStringLiteral("/VornRun.sh");
    for (const QString &line : lines) {
        if (!line.startsWith(key) || !line.endsWith(launcher)) {
            continue;
        }
        const QString named = line.mid(key.size(), line.size() - key.size() - launcher.size());
        return QDir::isAbsolutePath(named) ? QFileInfo(named).canonicalFilePath() == m_directory
                                           : m_directory.endsWith(QLatin1Char('/') + named);
    }
    return false;
}
