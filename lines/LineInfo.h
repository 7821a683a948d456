#pragma once

#include <QList>
#include <QObject>
#include <QString>

// What a record holds. A catalogue has thousands of them: plain members, widest first.
struct LineValues {
    QString lineArea;
    QString lineName;
    QString lineImage;
    QString lineUuid;
    QString serverIp;
    QString domain;
    QString transDomain;
    QString transIp;
    QString transPort;
    QList<QObject *> childItem;
    QList<QObject *> childItem4Load;
    double lon = 0;
    double lat = 0;
    double lineLoad = 0;
    double pingFastPercent = 0;
    int lineId = 0;
    int level = 0;
    int serverPort = 0;
    int serverNum = 0;
    int ping = 0;
    int usedNum = 0;
    bool isCurrentUse = false;
    bool isRecommend = false;
};

// One entry of the line catalogue: an area (level 0) that groups lines, or a line (level 1).
// It does not own the objects of its lists; whoever builds the catalogue releases them.
// Every setter emits its signal, also when the value stays the same. GUI thread only.
class LineInfo : public QObject {
    Q_OBJECT
    Q_PROPERTY(int qLineId READ getLineId WRITE setLineId NOTIFY lineIdChanged)
    Q_PROPERTY(QString qLineArea READ getLineArea WRITE setLineArea NOTIFY lineAreaChanged)
    Q_PROPERTY(QString qLineName READ getLineName WRITE setLineName NOTIFY lineNameChanged)
    Q_PROPERTY(QString qLineImage READ getLineImage WRITE setLineImage NOTIFY lineImageChanged)
    Q_PROPERTY(QString qLineUuid READ getLineUuid WRITE setLineUuid NOTIFY lineUuidChanged)
    Q_PROPERTY(int qLevel READ getLevel WRITE setLevel NOTIFY levelChanged)
    Q_PROPERTY(QString qServerIp READ getServerIp WRITE setServerIp NOTIFY serverIpChanged)
    Q_PROPERTY(int qServerPort READ getServerPort WRITE setServerPort NOTIFY serverPortChanged)
    Q_PROPERTY(int qServerNum READ getServerNum WRITE setServerNum NOTIFY serverNumChanged)
    Q_PROPERTY(double qLon READ getLon WRITE setLon NOTIFY lonChanged)
    Q_PROPERTY(double qLat READ getLat WRITE setLat NOTIFY latChanged)
    Q_PROPERTY(int qPing READ getPing WRITE setPing NOTIFY pingChanged)
    // A number in the scenes, which compare it with 1.
    Q_PROPERTY(
        int qIsCurrentUse READ getIsCurrentUse WRITE setIsCurrentUse NOTIFY isCurrentUseChanged)
    Q_PROPERTY(QString qDomain READ getDomain WRITE setDomain NOTIFY domainChanged)
    Q_PROPERTY(int qUsedNum READ getUsedNum WRITE setUsedNum NOTIFY usedNumChanged)
    Q_PROPERTY(bool qIsRecommend READ getIsRecommend WRITE setIsRecommend NOTIFY isRecommendChanged)
    Q_PROPERTY(
        QString qTransDomain READ getTransDomain WRITE setTransDomain NOTIFY transDomainChanged)
    Q_PROPERTY(QString qTransIp READ getTransIp WRITE setTransIp NOTIFY transIpChanged)
    // Bindings on the relay's port refresh when its address is set: the two arrive together, the
    // address last.
    Q_PROPERTY(QString qTransPort READ getTransPort WRITE setTransPort NOTIFY transIpChanged)
    Q_PROPERTY(double qLineLoad READ getLineLoad WRITE setLineLoad NOTIFY lineLoadChanged)
    Q_PROPERTY(QList<QObject *> items READ getChildItem WRITE setChildItem NOTIFY childItemChanged)
    Q_PROPERTY(QList<QObject *> loadItems READ getChildItem4Load WRITE setChildItem4Load NOTIFY
            childItem4LoadChanged)

public:
    explicit LineInfo(QObject *parent = nullptr);
    explicit LineInfo(LineValues &&values);

    int getLineId() const { return m_values.lineId; }
    QString getLineArea() const { return m_values.lineArea; }
    QString getLineName() const { return m_values.lineName; }
    QString getLineImage() const { return m_values.lineImage; } // a flag's name or its address
    QString getLineUuid() const { return m_values.lineUuid; }
    int getLevel() const { return m_values.level; } // 0 an area, 1 a line
    QString getServerIp() const { return m_values.serverIp; }
    int getServerPort() const { return m_values.serverPort; }
    int getServerNum() const { return m_values.serverNum; } // entries of an area, "Fastest" counted
    double getLon() const { return m_values.lon; } // degrees
    double getLat() const { return m_values.lat; } // degrees
    int getPing() const { return m_values.ping; } // milliseconds, the last measured
    bool getIsCurrentUse() const { return m_values.isCurrentUse; }
    QString getDomain() const { return m_values.domain; }
    int getUsedNum() const { return m_values.usedNum; }
    bool getIsRecommend() const { return m_values.isRecommend; }
    QString getTransDomain() const { return m_values.transDomain; } // the relay's, as the next two
    QString getTransIp() const { return m_values.transIp; }
    QString getTransPort() const { return m_values.transPort; }
    double getLineLoad() const { return m_values.lineLoad; }
    QList<QObject *> getChildItem() const { return m_values.childItem; }
    QList<QObject *> getChildItem4Load() const
    {
        return m_values.childItem4Load;
    } // without "Fastest"
    double getPingFastPercent() const { return m_values.pingFastPercent; } // share of fast pings

    void setLineId(int value) { assign(m_values.lineId, value, &LineInfo::lineIdChanged); }
    void setLineArea(const QString &value)
    {
        assign(m_values.lineArea, value, &LineInfo::lineAreaChanged);
    }
    void setLineName(const QString &value)
    {
        assign(m_values.lineName, value, &LineInfo::lineNameChanged);
    }
    void setLineImage(const QString &value)
    {
        assign(m_values.lineImage, value, &LineInfo::lineImageChanged);
    }
    void setLineUuid(const QString &value)
    {
        assign(m_values.lineUuid, value, &LineInfo::lineUuidChanged);
    }
    void setLevel(int value) { assign(m_values.level, value, &LineInfo::levelChanged); }
    void setServerIp(const QString &value)
    {
        assign(m_values.serverIp, value, &LineInfo::serverIpChanged);
    }
    void setServerPort(int value)
    {
        assign(m_values.serverPort, value, &LineInfo::serverPortChanged);
    }
    void setServerNum(int value) { assign(m_values.serverNum, value, &LineInfo::serverNumChanged); }
    void setLon(double value) { assign(m_values.lon, value, &LineInfo::lonChanged); }
    void setLat(double value) { assign(m_values.lat, value, &LineInfo::latChanged); }
    void setPing(int value) { assign(m_values.ping, value, &LineInfo::pingChanged); }
    void setIsCurrentUse(bool value)
    {
        assign(m_values.isCurrentUse, value, &LineInfo::isCurrentUseChanged);
    }
    void setDomain(const QString &value)
    {
        assign(m_values.domain, value, &LineInfo::domainChanged);
    }
    void setUsedNum(int value) { assign(m_values.usedNum, value, &LineInfo::usedNumChanged); }
    void setIsRecommend(bool value)
    {
        assign(m_values.isRecommend, value, &LineInfo::isRecommendChanged);
    }
    void setTransDomain(const QString &value)
    {
        assign(m_values.transDomain, value, &LineInfo::transDomainChanged);
    }
    void setTransIp(const QString &value)
    {
        assign(m_values.transIp, value, &LineInfo::transIpChanged);
    }
    void setTransPort(const QString &value)
    {
        assign(m_values.transPort, value, &LineInfo::transPortChanged);
    }
    void setLineLoad(double value) { assign(m_values.lineLoad, value, &LineInfo::lineLoadChanged); }
    void setChildItem(const QList<QObject *> &value)
    {
        assign(m_values.childItem, value, &LineInfo::childItemChanged);
    }
    void setChildItem4Load(const QList<QObject *> &value)
    {
        assign(m_values.childItem4Load, value, &LineInfo::childItem4LoadChanged);
    }
    void setPingFastPercent(double value) { m_values.pingFastPercent = value; }

signals:
    void lineIdChanged();
    void lineAreaChanged();
    void lineNameChanged();
    void lineImageChanged();
    void childItemChanged();
    void levelChanged();
    void serverIpChanged();
    void serverPortChanged();
    void serverNumChanged();
    void lonChanged();
    void latChanged();
    void pingChanged();
    void isCurrentUseChanged();
    void domainChanged();
    void usedNumChanged();
    void lineUuidChanged();
    void isRecommendChanged();
    void transDomainChanged();
    void transIpChanged();
    void transPortChanged();
    void lineLoadChanged();
    void childItem4LoadChanged();

private:
    template <typename Value>
    void assign(Value &member, const Value &value, void (LineInfo::*changed)())
    {
        member = value;
        emit(this->*changed)();
    }

    LineValues m_values;
};
