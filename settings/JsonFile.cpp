#include "settings/JsonFile.h"

#include "base/DebugLine.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <unistd.h>

namespace {

// Our files have a few dozen lines. Anything with more than this is none of them, and a log line
// for each would hold the program up for minutes.
constexpr int linesLogged = 10000;

// A pipe would block, and a device must not be replaced by a file.
bool isSomethingElse(const QFileInfo &file) { return file.exists() && !file.isFile(); }

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Buffered bytes reach the disk in flush(). commit() does not look at a failure there and would put
// the cut file in place. It is called in any case: a QSaveFile without it removes what it opened.
bool putInPlace(QSaveFile &file, const QByteArray &content)
{
    const bool isWritten = file.write(content) == content.size() && file.flush();
    if (!isWritten) {
        file.cancelWriting();
    }
    const bool isInPlace = file.commit();
    return isWritten && isInPlace;
}

// A file that root replaces stays the user's.
void keepOwner(const QSaveFile &file, const QFileInfo &previous)
{
    if (previous.exists() && fchown(file.handle(), previous.ownerId(), previous.groupId()) != 0) {
        debugLine() << "文件属主未保留:" << previous.filePath();
    }
}

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
    const QFileInfo previous(path);
    QSaveFile file(path);
    file.setDirectWriteFallback(true);
    // The fallback empties the file before it writes.
    const bool isAtRisk = previous.exists() && !QFileInfo(previous.path()).isWritable();
    const QByteArray before = isAtRisk ? contentOf(path) : QByteArray();
    if (isSomethingElse(previous) || !file.open(QIODevice::WriteOnly)) {
        debugLine() << "文件无法写入:" << path;
        return;
    }
    keepOwner(file, previous);
    if (access == Access::OwnerOnly) {
        file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    }
    if (putInPlace(file, content)) {
        return;
    }
    debugLine() << "文件无法写入:" << path;
    if (isAtRisk && contentOf(path) != before) {
        QFile old(path); // emptying it made room for what it held
        if (!old.open(QIODevice::WriteOnly) || old.write(before) != before.size()) {
            debugLine() << "文件无法恢复:" << path;
        }
    }
}

std::optional<QJsonDocument> JsonFile::read(const QString &path, const char *lineLabel)
{
    QFile file(path);
    if (isSomethingElse(QFileInfo(path))) {
        return std::nullopt;
    }
    if (file.open(QIODevice::ReadOnly)) {
        logLines(file, lineLabel);
        file.close();
    }
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    const QString text = QString::fromUtf8(file.readAll()); // stops at the first zero byte
    file.close();
    debugLine() << "data:" << text;
    return QJsonDocument::fromJson(text.toUtf8());
}
