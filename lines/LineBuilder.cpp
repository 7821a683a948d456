#include "lines/LineBuilder.h"

#include "lines/Coordinates.h"
#include "lines/LineInfo.h"
#include "lines/TextOrNumber.h"

#include <QJsonArray>
#include <QJsonValue>

#include <utility>

namespace {

constexpr int constantServerPort = 3000; // the server sends none
constexpr int fastestPing = 101; // the entry stands in for lines not measured yet

QString textOf(const QJsonObject &object, QLatin1String key)
{
    return object.value(key).toString();
}

LineInfo *fastestEntry(const QString &area)
{
    LineValues entry;
    entry.lineName = QStringLiteral("Fastest");
    entry.lineArea = area;
    entry.level = 1;
    entry.ping = fastestPing;
    return new LineInfo(std::move(entry));
}

} // namespace

LineInfo *LineBuilder::area(const QJsonObject &parent)
{
    LineValues area;
    area.lineArea = textOf(parent, QLatin1String("name"));

    const QJsonArray servers = parent.value(QLatin1String("line")).toArray();
    area.childItem.reserve(servers.size());
    for (const QJsonValue &value : servers) {
        const QJsonObject server = value.toObject();
        LineValues line;
        line.level = 1;
        line.lineArea = area.lineArea;
        line.lineName = textOf(server, QLatin1String("name"));
        line.lineId = textOrNumberToInt(server.value(QLatin1String("id")));
        line.lineImage = shared(textOf(server, QLatin1String("national_flag")));
        line.serverIp = textOf(server, QLatin1String("ip"));
        line.serverPort = constantServerPort;
        area.childItem.append(new LineInfo(std::move(line)));
    }
    return new LineInfo(std::move(area));
}

LineInfo *LineBuilder::areaByCountry(const QJsonObject &country)
{
    LineValues area;
    area.lineImage = shared(textOf(country, QLatin1String("img")));
    area.lineArea = shared(textOf(country, QLatin1String("name_en")));
    area.lon = textOrNumberToDouble(country.value(QLatin1String("lon")));
    area.lat = textOrNumberToDouble(country.value(QLatin1String("lat")));
    area.childItem4Load = linesOfCountry(country);
    area.childItem = area.childItem4Load;
    if (area.childItem.size() >= 2) {
        area.childItem.prepend(fastestEntry(area.lineArea));
    }
    area.serverNum = area.childItem.size();
    return new LineInfo(std::move(area));
}

QList<QObject *> LineBuilder::linesOfCountry(const QJsonObject &country)
{
    Names names;
    QList<QObject *> lines;
    const QJsonArray servers = country.value(QLatin1String("servers")).toArray();
    lines.reserve(servers.size());
    names.taken.reserve(servers.size());
    for (const QJsonValue &server : servers) {
        lines.append(lineOfCountry(server.toObject(), names));
    }
    return lines;
}

LineInfo *LineBuilder::lineOfCountry(const QJsonObject &server, Names &names)
{
    LineValues line;
    line.lineName = nameOf(server, names);
    line.lineArea = sharedTextOf(server, QLatin1String("name_en"));
    line.lineId = textOrNumberToInt(server.value(QLatin1String("id")));
    line.level = 1;
    line.lineImage = sharedTextOf(server, QLatin1String("national_flag"));
    line.serverIp = textOf(server, QLatin1String("ip"));
    line.serverPort = constantServerPort;
    line.domain = textOf(server, QLatin1String("domain"));
    line.lineUuid = textOf(server, QLatin1String("uuid"));
    line.lineLoad = server.value(QLatin1String("load")).toDouble();
    line.transDomain = sharedTextOf(server, QLatin1String("trans_domain"));
    line.transIp = sharedTextOf(server, QLatin1String("trans_ip"));
    line.transPort = shared(textOrNumberToText(server.value(QLatin1String("trans_port"))));
    const Coordinates coordinates = coordinatesOf(textOf(server, QLatin1String("srv_location")));
    line.lon = coordinates.lon;
    line.lat = coordinates.lat;
    return new LineInfo(std::move(line));
}

// The server's country and a count, or, without a country, its name and its id. A number that is
// missing or taken gives way to the next count.
QString LineBuilder::nameOf(const QJsonObject &server, Names &names)
{
    const QString country = textOrNumberToText(server.value(QLatin1String("country_id")));
    const QString front = country.isEmpty() ? textOf(server, QLatin1String("name")) : country;
    int &counter = names.counters[front];
    QString number = country.isEmpty() ? textOrNumberToText(server.value(QLatin1String("id")))
                                       : QString::number(++counter);
    QString name = front + QLatin1String(" #") + number;
    while (number.isEmpty() || names.taken.contains(name)) {
        number = QString::number(++counter);
        name = front + QLatin1String(" #") + number;
    }
    names.taken.insert(name);
    return name;
}

QString LineBuilder::sharedTextOf(const QJsonObject &server, QLatin1String key)
{
    return shared(textOf(server, key));
}

// Many servers have these values in common, and a text that is shared is stored once.
QString LineBuilder::shared(const QString &text)
{
    const auto known = m_texts.constFind(text);
    return known != m_texts.constEnd() ? known.value() : m_texts.insert(text, text).value();
}
