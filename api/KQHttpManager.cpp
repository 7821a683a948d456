#include "api/KQHttpManager.h"

#include "api/FreshConnections.h"
#include "base/DebugLine.h"
#include "base/Deployment.h"
#include "installer/Operating.h"
#include "settings/DataManager.h"

#include <QCryptographicHash>
#include <QSysInfo>

KQHttpManager::KQHttpManager(QObject *parent)
    : QObject(parent)
    , m_dataManager(DataManager::getInstance())
    , m_connections(new FreshConnections(this))
    , m_baseAddress(m_dataManager->getDomainName())
    , m_testDomainName(Deployment::current().apiBaseAddress)
    , m_ipLookupAddress(Deployment::current().ipLookupAddress)
{
    const QString osVersion = QSysInfo::productType() + QSysInfo::productVersion();
    m_osVersion = osVersion.toLocal8Bit();
    debugLine() << "操作系统版本:" << osVersion;

    const QStringList macAddresses = Operating::getMac();
    debugLine() << "macAddressList size :" << macAddresses.size();
    if (!macAddresses.isEmpty()) {
        const QString &mac = macAddresses.first();
        m_mac = mac.toLocal8Bit();
        debugLine() << "mac:" << mac;
        debugLine() << "macAddressMd5:"
                    << QCryptographicHash::hash(mac.toUtf8(), QCryptographicHash::Md5).toHex();
    }
    requestWebAddress();
}

KQHttpManager::~KQHttpManager() = default;

QString KQHttpManager::getTestDomainName() const { return m_testDomainName; }

void KQHttpManager::setTestDomainName(const QString &value) { m_testDomainName = value; }
