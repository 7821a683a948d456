#include "app/LogHandlers.h"

#include "base/ExecutableDirectory.h"

#include <QDateTime>
#include <QFile>
#include <QMutex>
#include <QMutexLocker>

#include <cstdio>

bool isDebug = VORN_LOG_TO_FILE;
bool openAllprint = VORN_LOG_EVERYTHING;

namespace {

// Writing to a file that did not open makes Qt warn, and that warning would come back into the
// handler that holds the mutex.
void appendLine(const QString &path, const QString &line)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append)) {
        return;
    }
    file.write(line.toUtf8() + "\r\n");
    file.flush();
}

struct Level {
    QtMsgType type;
    const char *tag; // of kqMessageOutput()
    const char *word; // of outputMessage()
};

// Warnings are tagged as errors: "errorlog.txt" is what support asks users for.
constexpr Level levels[] = {
    {QtDebugMsg, "[Debug]", "Debug:"},
    {QtWarningMsg, "[Error]", "Warning:"},
    {QtCriticalMsg, "[Critical]", "Critical:"},
    {QtFatalMsg, "[Fatal]", "Fatal:"},
    {QtInfoMsg, "[Info]", ""},
};

Level levelOf(QtMsgType type)
{
    for (const Level &level : levels) {
        if (level.type == type) {
            return level;
        }
    }
    return {QtInfoMsg, "", ""};
}

} // namespace

void kqMessageOutput(QtMsgType type, const QMessageLogContext &context, const QString &msg)
{
    const QString time =
        QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    const QString tag = QString::fromLatin1(levelOf(type).tag);
    // Concatenated, for a message may itself hold "%1".
    QString fileLine = tag + QLatin1Char('[') + time + QLatin1String("][Line:")
        + QString::number(context.line) + QLatin1String("][Function:")
        + QLatin1String(context.function) + QLatin1String("][msg:") + msg + QLatin1String("]\r\n");
    QString consoleLine = tag + msg + QLatin1String("\r\n");
    if (type == QtDebugMsg && !isDebug) {
        fileLine.clear();
        consoleLine.clear();
    }

    if (openAllprint) {
        static QMutex mutex;
        const QMutexLocker locker(&mutex);
        appendLine(executableDirectory() + QLatin1String("/log.txt"), fileLine);
    } else if (tag == QLatin1String("[Error]")) {
        static QMutex mutex;
        const QMutexLocker locker(&mutex);
        appendLine(executableDirectory() + QLatin1String("/errorlog.txt"), fileLine);
    }

    std::fprintf(stdout, "%s\n", consoleLine.toLocal8Bit().constData());
    std::fflush(stdout);
}

void outputMessage(QtMsgType type, const QMessageLogContext &context, const QString &msg)
{
    static QMutex mutex;
    const QMutexLocker locker(&mutex);

    const QString place = QLatin1String("File:(") + QString(QLatin1String(context.file))
        + QLatin1String(") Line:(") + QString::number(context.line) + QLatin1Char(')');
    const QString time =
        QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss ddd"));
    const QLatin1Char blank(' ');
    appendLine(QStringLiteral("log.txt"),
        QLatin1String(levelOf(type).word) + blank + place + blank + msg + QLatin1String(" (") + time
            + QLatin1Char(')'));
}
