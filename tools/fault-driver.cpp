// What a scene does that no click of the installer does, for scripts/faults.sh:
//     vorn-fault-driver install SOURCE TARGET ROUNDS
//     vorn-fault-driver download ADDRESS
// The second one hands an address that a reply could name to the updater's download and waits for
// two seconds. The first one installs again and again in one process. Every round is what the scene
// does with objects of its own: it asks the server, writes launchers into the working directory and
// settings into the target, and copies the tree. Prints the resident memory in KiB after the first
// twenty rounds and after the last one.

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

int installAgainAndAgain(const QString &source, const QString &target, int rounds)
{
    for (int round = 1; round <= rounds; ++round) {
        if (!install(source, target)) {
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

int download(const QString &address)
{
    constexpr int waitMs = 2000;
    KQHttpManager server;
    server.httpRequestFile(address, 1);
    QTimer::singleShot(waitMs, QCoreApplication::instance(), &QCoreApplication::quit);
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() == 5 && arguments.at(1) == QLatin1String("install")) {
        return installAgainAndAgain(arguments.at(2), arguments.at(3), arguments.at(4).toInt());
    }
    if (arguments.size() == 3 && arguments.at(1) == QLatin1String("download")) {
        return download(arguments.at(2));
    }
    std::fputs(
        "usage: vorn-fault-driver install SOURCE TARGET ROUNDS | download ADDRESS\n", stderr);
    return 2;
}
