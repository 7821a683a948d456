#include "FuzzSetting.h"

#include "base/Deployment.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

namespace {

struct Setting {
    Setting()
    {
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        Deployment::current() = Deployment();
        QDir::setCurrent(directory.path());
    }

    int argumentCount = 1;
    char name[5] = "fuzz";
    char *arguments[2] = {name, nullptr};
    QCoreApplication application{argumentCount, arguments};
    // In memory where the system has a file system there: a target writes files in every run.
    QTemporaryDir directory{QFileInfo(QStringLiteral("/dev/shm")).isWritable()
            ? QStringLiteral("/dev/shm/fuzz-XXXXXX")
            : QDir::tempPath() + QStringLiteral("/fuzz-XXXXXX")};
};

} // namespace

void prepareFuzzing() { static const Setting setting; }
