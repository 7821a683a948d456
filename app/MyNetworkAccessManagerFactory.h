#pragma once

#include <QQmlNetworkAccessManagerFactory>

// Gives the scene's engine access managers with a disk cache of 100 MiB.
class MyNetworkAccessManagerFactory : public QQmlNetworkAccessManagerFactory {
public:
    QNetworkAccessManager *create(QObject *parent) override;
};
