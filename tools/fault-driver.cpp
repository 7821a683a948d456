// Installs again and again in one process, for scripts/faults.sh:
//     vorn-fault-driver SOURCE TARGET ROUNDS
// Every round is what the scene does with objects of its own: it asks the server, writes launchers
// into the working directory and settings into the target, and copies the tree. Prints the resident
// memory in KiB after the first twenty rounds and after the last one.

#include "api/KQHttpManager.h"
#include "installer/Operating.h"
#include "settings/DataManager.h"

#include <QEventLoop>
#include <QFile>
#include <QGuiApplication>
#include <QTimer>

#include <cstdio>

#include <unistd.h>

namespace {

constexpr int warmUpRounds = 20; // caches of Qt and of the allocator fill up first
constexpr int answerWaitMs = 15000; // longer than the requests' own time-out

long residentKiB()
{
    QFile file(QStringLiteral("/proc/self/statm")); // pages: all, resident, ...
    if (!file.open(QIODevice::ReadOnly)) {
        return 0;
    }
    return file.readAll().split(' ').value(1).toLong() * (sysconf(_SC_PAGESIZE) / 1024);
}

// False when the init record did not come.
bool askServer(KQHttpManager &server)
{
    QEventLoop answered;
    QObject::connect(&server, &KQHttpManager::domainNameFromWebStatus, &answered, [&server] {
        server.checkRegion();
        server.getInitInfo();
    });
    QObject::connect(
        &server, &KQHttpManager::initSystemStatus, &answered, [&answered] { answered.exit(0); });
    QTimer::singleShot(answerWaitMs, &answered, [&answered] { answered.exit(1); });
    server.getDomainNameFromWeb();
    return answered.exec() == 0;
}

bool install(const QString &source, const QString &target)
{
    KQHttpManager server;
    Operating host;
    DataManager *settings = DataManager::getInstance();
    const bool isAnswered = askServer(server);
    settings->readDataFromFile(target + QLatin1Char('/'));
    settings->changeLanguage(0);
    server.pushLog(
        QStringLiteral("language"), QString(), QStringLiteral("1"), settings->getSoftUseLanguage());
    settings->setInstallPath(target);
    const bool isWritten = host.creatVornRunShell() && host.creatUninstallRunShell();
    bool isCopied = false;
    QObject::connect(
        &host, &Operating::sendSystemCmdResult, &host,
        [&isCopied](bool success) { isCopied = success; }, Qt::DirectConnection);
    host.copyDirectoryFilesThread(source, target, true);
    Operating::waitForCopies();
    settings->writeDataToFile(target + QLatin1Char('/'));
    return isAnswered && isWritten && isCopied
        && host.ishavefile(target + QStringLiteral("/VornData.json"));
}

} // namespace

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() != 4) {
        std::fputs("usage: vorn-fault-driver SOURCE TARGET ROUNDS\n", stderr);
        return 2;
    }
    const int rounds = arguments.at(3).toInt();
    for (int round = 1; round <= rounds; ++round) {
        if (!install(arguments.at(1), arguments.at(2))) {
            std::printf("round %d failed\n", round);
            return 1;
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        if (round == warmUpRounds || round == rounds) {
            std::printf("%ld\n", residentKiB());
        }
    }
    return 0;
}
