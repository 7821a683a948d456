#pragma once

#include <QHash>
#include <QJsonObject>
#include <QList>
#include <QSet>
#include <QString>

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

private:
    // Of one country: the names must differ, whatever the server sends.
    struct Names {
        QHash<QString, int> counters; // by the text in front of " #"
        QSet<QString> taken;
    };

    QList<QObject *> linesOfCountry(const QJsonObject &country);
    LineInfo *lineOfCountry(const QJsonObject &server, Names &names);
    static QString nameOf(const QJsonObject &server, Names &names);
    QString sharedTextOf(const QJsonObject &server, QLatin1String key);
    QString shared(const QString &text);

    QHash<QString, QString> m_texts;
};
