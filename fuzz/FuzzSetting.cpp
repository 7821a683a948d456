#include "FuzzSetting.h"

#include "base/Deployment.h"

#include <QCoreApplication>
#include <QDir>
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
    QTemporaryDir directory;
};

} // namespace

void prepareFuzzing() { static const Setting setting; }
