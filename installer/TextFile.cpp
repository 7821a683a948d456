#include "installer/TextFile.h"

#include <QFile>
#include <QFileInfo>

WrittenFile writeTextFile(const QString &path, const QString &text, mode_t mode)
{
    const QFileInfo file(path);
    const Directory directory = Directory::open(file.path());
    if (!directory.isOpen()) {
        return {};
    }
    return writeFile(directory, QFile::encodeName(file.fileName()), text.toUtf8(), mode);
}
