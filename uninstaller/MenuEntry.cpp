#include "uninstaller/MenuEntry.h"

#include "base/InstalledFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>

bool MenuEntry::starts(const QString &entry, const QString &directory)
{
    constexpr qint64 longestEntry = 65536;
    // A pipe in its place keeps nobody waiting.
    const int handle =
        open(QFile::encodeName(entry).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    QFile file;
    if (handle < 0 || !file.open(handle, QIODevice::ReadOnly, QFile::AutoCloseHandle)) {
        return false;
    }
    const QStringList lines = QString::fromUtf8(file.read(longestEntry)).split(QLatin1Char('\n'));
    const QString key = QStringLiteral("Exec=");
    const QString launcher = QLatin1Char('/') + QLatin1String(InstalledFiles::clientLauncher);
    for (const QString &line : lines) {
        if (!line.startsWith(key) || !line.endsWith(launcher)) {
            continue;
        }
        // It stands there as the user typed it, so it may go through links; one that was picked in
        // the installer's folder dialog lacks the leading "/".
        const QString named = line.mid(key.size(), line.size() - key.size() - launcher.size());
        return QDir::isAbsolutePath(named) ? QFileInfo(named).canonicalFilePath() == directory
                                           : directory.endsWith(QLatin1Char('/') + named);
    }
    return false;
}
