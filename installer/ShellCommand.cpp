#include "installer/ShellCommand.h"

#include <QFile>

#include <cstdlib>

void runShellCommand(const QString &command)
{
    [[maybe_unused]] const int ignored = std::system(QFile::encodeName(command).constData());
}
