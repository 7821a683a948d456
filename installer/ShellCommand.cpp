#include "installer/ShellCommand.h"

#include <QFile>
#include <QRegularExpression>

#include <cstdlib>

void runShellCommand(const QString &command)
{
    [[maybe_unused]] const int ignored = std::system(QFile::encodeName(command).constData());
}

QString insideQuotes(const QString &text)
{
    // A backslash is an ordinary character but in front of these, of another one, of a line break
    // and of the closing quote.
    static const QRegularExpression special(QStringLiteral(R"((["$`]|\\(?=["$`\\\n]|\z)))"));
    return QString(text).replace(special, QStringLiteral("\\\\1"));
}

bool isProcessName(const QString &name)
{
    static const QRegularExpression pattern(
        QStringLiteral(R"(\A(?=.*[\p{L}\p{N}])[\p{L}\p{N}_.+/:@][\p{L}\p{N}_.+/:@-]*\z)"));
    return pattern.match(name).hasMatch();
}
