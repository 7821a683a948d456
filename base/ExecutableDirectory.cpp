#include "base/ExecutableDirectory.h"

#include <QCoreApplication>

QString executableDirectory() { return QCoreApplication::applicationDirPath(); }
