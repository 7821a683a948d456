#include "installer/TextFile.h"

#include <QByteArray>
#include <QFile>

#include <cstdio>

bool writeTextFile(const QString &path, const QString &text)
{
    std::FILE *file = std::fopen(QFile::encodeName(path).constData(), "w");
    if (file == nullptr) {
        return false;
    }
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), file);
    std::fclose(file);
    return true;
}
