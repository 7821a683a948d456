#include "app/MyNetworkAccessManagerFactory.h"

#include "base/DebugLine.h"

#include <QNetworkAccessManager>
#include <QNetworkDiskCache>
#include <QStandardPaths>

namespace {
constexpr qint64 maximumCacheBytes = 104857600;
}

QNetworkAccessManager *MyNetworkAccessManagerFactory::create(QObject *parent)
{
    auto *manager = new QNetworkAccessManager(parent);
    auto *cache = new QNetworkDiskCache(manager);
    // The readable name of the location, not its path: the cache lies in a directory of that name
    // in the working directory, so that it leaves with the unpacked bundle.
    const QString directory = QStandardPaths::displayName(QStandardPaths::CacheLocation);
    debugLine() << "cache path:" << directory;
    cache->setCacheDirectory(directory);
    cache->setMaximumCacheSize(maximumCacheBytes);
    manager->setCache(cache);
    return manager;
}
