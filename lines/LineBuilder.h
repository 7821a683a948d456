#pragma once

#include <QCborValue>
#include <QHash>
#include <QJsonObject>
#include <QList>
#include <QString>

#include <array>
#include <cstddef>
#include <vector>

class LineInfo;
class QObject;

// Makes the records of one catalogue from the server's country and server objects. Use one builder
// for a whole reply: it keeps the texts that it has read, so that records with equal texts share
// them. The records have no parent; they belong to the caller.
class LineBuilder {
public:
    // An area of the flat reading: its lines stand under "line".
    LineInfo *area(const QJsonObject &parent);
    // An area of the country reading, with numbered names, coordinates and the "Fastest" entry.
    LineInfo *areaByCountry(const QJsonObject &country);

    enum Key : std::size_t {
        CountryId,
        Id,
        Name,
        NameEn,
        NationalFlag,
        Ip,
        Domain,
        Uuid,
        Load,
        TransDomain,
        TransIp,
        TransPort,
        SrvLocation,
        KeyCount
    };

private:
    using ServerValues = std::array<QCborValue, KeyCount>;

    struct KeyAtPosition {
        QCborValue text;
        std::size_t key = KeyCount;
    };

    struct LastValue {
        QCborValue value;
        QString text;
    };

    QList<QObject *> linesOfCountry(const QJsonObject &country);
    LineInfo *lineOfCountry(const QJsonObject &server, QHash<QString, int> &counters);
    ServerValues valuesOf(const QJsonObject &server);
    const QString &sharedText(const ServerValues &values, Key key);
    QString shared(const QString &text);

    QHash<QString, QString> m_texts;
    std::vector<KeyAtPosition> m_positions; // of the keys in the server object read last
    std::array<LastValue, KeyCount> m_last;
};
