#pragma once

#include <QJsonObject>
#include <QString>

// Where the traffic leaves, as the lookup service sees it.
struct ExitAddress {
    QString ip;
    int cityid = 0;
    QString country;
    QString area;
    QString province;
    QString city;
    QString isp;
};

// Decides what the answers of the IP-lookup service mean. The first one tells the machine's own
// address; every later one tells whether traffic now leaves elsewhere, that is, through the tunnel.
// Errors and answers that still show the own address share one count of retries.
class IpCheck {
public:
    enum class Verdict { OwnAddress, Retry, Proxied, NotProxied, GiveUp };

    Verdict countError(); // Retry or GiveUp
    Verdict answered(const QJsonObject &reply); // anything but GiveUp

    const QString &ownAddress() const { return localPublicIp; }
    const ExitAddress &exitAddress() const { return m_exitAddress; }
    bool isFirstLookup() const { return firstIpLookup; }

    int retries() const { return getMyIPNum; }
    void setRetries(int value) { getMyIPNum = value; }

private:
    void countRetry();

    bool firstIpLookup = true;
    QString localPublicIp;
    int getMyIPNum = 0;
    ExitAddress m_exitAddress;
};
