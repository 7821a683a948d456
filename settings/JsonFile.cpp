#include "settings/JsonFile.h"

#include "base/DebugLine.h"
#include "settings/ReplacedFile.h"

#include <QFile>

#include <algorithm>

namespace {

// Our files have a few dozen lines. Anything with more than this is none of them, and a log line
// for each would hold the program up for minutes.
constexpr int linesLogged = 10000;

void logLines(QFile &file, const char *label)
{
    for (int i = 0; i < linesLogged && !file.atEnd(); ++i) {
        QByteArray line = file.readLine();
        if (line.endsWith('\n')) {
            line.chop(1);
        }
        debugLine() << label << QString::fromUtf8(line);
    }
}

} // namespace

void JsonFile::write(const QString &path, const QByteArray &content, Access access)
{
    const mode_t mode = access == Access::OwnerOnly ? 0600 : 0644;
    if (!ReplacedFile::write(path, content, mode)) {
        debugLine() << "文件无法写入:" << path;
    }
}

std::optional<QJsonDocument> JsonFile::read(const QString &path, const char *lineLabel)
{
    QFile file;
    if (!ReplacedFile::openToRead(path, file)) {
        return std::nullopt;
    }
    if (file.size() <= ReplacedFile::longest) {
        logLines(file, lineLabel);
        file.seek(0);
    }
    // Room is made for all that is asked for, so no more than one byte too much is.
    const QByteArray bytes = file.read(std::min(file.size(), ReplacedFile::longest) + 1);
    if (bytes.size() > ReplacedFile::longest) {
        debugLine() << "文件过大:" << path;
        return QJsonDocument();
    }
    const QString text = QString::fromUtf8(bytes); // stops at the first zero byte
    debugLine() << "data:" << text;
    return QJsonDocument::fromJson(text.toUtf8());
}
