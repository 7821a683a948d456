#include "installer/EarlierManifest.h"

#include "base/Directory.h"
#include "base/InstalledFiles.h"

#include <QByteArrayList>
#include <QFile>
#include <QSet>

#include <optional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr mode_t mode = 0644;

// Only of a regular file that is no link.
std::optional<QByteArrayList> linesOf(const Directory &directory, const char *name)
{
    const int handle =
        openat(directory.handle(), name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    struct stat status { };
    if (handle < 0 || fstat(handle, &status) != 0 || !S_ISREG(status.st_mode)
        || status.st_size > InstalledFiles::largestManifest) {
        if (handle >= 0) {
            close(handle);
        }
        return std::nullopt;
    }
    QFile file;
    file.open(handle, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
    return file.read(InstalledFiles::largestManifest).split('\n');
}

} // namespace

void keepEarlierManifest(const QString &bundle, const QString &target)
{
    const Directory to = Directory::open(target);
    const Directory from = Directory::open(bundle);
    const auto brought = linesOf(from, InstalledFiles::manifest);
    const auto installed = linesOf(to, InstalledFiles::manifest);
    if (!to.isOpen() || !brought || !installed) {
        return;
    }
    const auto earlier = linesOf(to, InstalledFiles::previousManifest);
    QSet<QByteArray> known(brought->begin(), brought->end());
    QByteArray kept;
    const QByteArrayList lines = earlier.value_or(QByteArrayList()) + *installed;
    for (const QByteArray &line : lines) {
        if (!line.isEmpty() && !known.contains(line)) {
            known.insert(line);
            kept += line + '\n';
        }
    }
    if (!kept.isEmpty()) {
        writeFile(to, InstalledFiles::previousManifest, kept, mode);
    } else if (earlier) {
        unlinkat(to.handle(), InstalledFiles::previousManifest, 0);
    }
}
