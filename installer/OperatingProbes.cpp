#include "installer/Operating.h"

#include "base/DebugLine.h"
#include "installer/AddressBlocks.h"
#include "installer/CpuSnapshot.h"

#include <QCryptographicHash>
#include <QFile>
#include <QNetworkInterface>
#include <QRegularExpression>
#include <QTextCodec>
#include <QThread>

#include <algorithm>
#include <cstdio>

QStringList Operating::getMac()
{
    QStringList addresses;
    const QList<QNetworkInterface> interfaces = QNetworkInterface::allInterfaces();
    for (const QNetworkInterface &interface : interfaces) {
        const QNetworkInterface::InterfaceFlags flags = interface.flags();
        if (flags.testFlag(QNetworkInterface::IsUp)
            && !flags.testFlag(QNetworkInterface::IsLoopBack)
            && !interface.humanReadableName().contains(QLatin1String("VMware"))) {
            addresses.append(interface.hardwareAddress());
        }
    }
    return addresses;
}

uint Operating::IPV4StringToInteger(const QString &ip) { return AddressBlocks::fromDottedText(ip); }

void Operating::GetIPSize() { AddressBlocks::ranges(); }

bool Operating::EnableIPInBackCh(const QString &ip)
{
    const uint address = IPV4StringToInteger(ip);
    debugLine() << "IP(String)" << ip;
    debugLine() << "IP(int):" << address;
    return !AddressBlocks::contains(address);
}

double Operating::getCurrentSystemMemoryInfo()
{
    debugLine() << "getCurrentSystemMemoryInfo";
    unsigned long total = 0;
    unsigned long free = 0;
    if (std::FILE *file = std::fopen("/proc/meminfo", "r")) {
        debugLine() << "/proc/meminfo open successed";
        char line[256] = {};
        char name[20] = {};
        for (unsigned long *value : {&total, &free}) {
            if (std::fgets(line, sizeof line, file) != nullptr) {
                std::sscanf(line, "%19s %lu ", name, value);
            }
        }
        std::fclose(file);
    } else {
        debugLine() << "/proc/meminfo open failed";
    }
    if (total == 0) {
        return 0.0;
    }
    // The figure is a flag: whole-number division makes it 100 when nothing is free and 0
    // otherwise.
    const unsigned long figure = (total - free) / total * 100;
    return static_cast<double>(figure);
}

double Operating::getCurrentSystemCpuRate()
{
    CPUPACKED first{};
    CPUPACKED second{};
    get_cpuoccupy(&first);
    QThread::sleep(1);
    return get_cpuoccupy(&second);
}

bool Operating::checkRegExpIsMatch(const QString &reg, const QString &msg)
{
    debugLine() << "reg:" << reg;
    debugLine() << "msg:" << msg;
    return QRegularExpression(reg).match(msg).hasMatch();
}

QString Operating::getFileMd5(const QString &path)
{
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Md5);
    if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file)) {
        return {};
    }
    return QString::fromLatin1(hash.result().toHex());
}

QString Operating::getCorrectUnicode(const QByteArray &bytes)
{
    QTextCodec::ConverterState state;
    QString text =
        QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    if (state.invalidChars == 0) {
        return text;
    }
    const QTextCodec *chinese = QTextCodec::codecForName("GBK");
    return chinese == nullptr ? text : chinese->toUnicode(bytes);
}

bool Operating::checkAdapterIsExist(const QString &name)
{
    const QList<QNetworkInterface> interfaces = QNetworkInterface::allInterfaces();
    return std::any_of(
        interfaces.begin(), interfaces.end(), [&name](const QNetworkInterface &interface) {
            return interface.humanReadableName() == name && !interface.addressEntries().isEmpty();
        });
}
