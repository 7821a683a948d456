#include "lines/LineBuilder.h"

#include "lines/Coordinates.h"
#include "lines/LineInfo.h"
#include "lines/TextOrNumber.h"

#include <QCborMap>
#include <QJsonArray>
#include <QJsonValue>

#include <algorithm>
#include <utility>

namespace {

constexpr int constantServerPort = 3000; // the server sends none
constexpr int fastestPing = 101; // the entry stands in for lines not measured yet

// In the order of LineBuilder::Key.
const std::array<QLatin1String, LineBuilder::KeyCount> keyTexts = {
    QLatin1String("country_id"),
    QLatin1String("id"),
    QLatin1String("name"),
    QLatin1String("name_en"),
    QLatin1String("national_flag"),
    QLatin1String("ip"),
    QLatin1String("domain"),
    QLatin1String("uuid"),
    QLatin1String("load"),
    QLatin1String("trans_domain"),
    QLatin1String("trans_ip"),
    QLatin1String("trans_port"),
    QLatin1String("srv_location"),
};

QString textOf(const QJsonObject &object, QLatin1String key)
{
    return object.value(key).toString();
}

// A text need not become a JSON value first, which takes three times as long as reading it.
int toInt(const QCborValue &value)
{
    return value.isString() ? value.toString().toInt() : textOrNumberToInt(value.toJsonValue());
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
    QHash<QString, int> counters;
    QList<QObject *> lines;
    const QJsonArray servers = country.value(QLatin1String("servers")).toArray();
    lines.reserve(servers.size());
    for (const QJsonValue &server : servers) {
        lines.append(lineOfCountry(server.toObject(), counters));
    }
    return lines;
}

LineInfo *LineBuilder::lineOfCountry(const QJsonObject &server, QHash<QString, int> &counters)
{
    const ServerValues values = valuesOf(server);
    const QCborValue &id = values[Id];
    const QString &countryId = sharedText(values, CountryId);
    LineValues line;
    line.lineName = countryId.isEmpty()
        ? values[Name].toString() + QLatin1String(" #") + textOrNumberToText(id.toJsonValue())
        : countryId + QLatin1String(" #") + QString::number(++counters[countryId]);
    line.lineArea = sharedText(values, NameEn);
    line.lineId = toInt(id);
    line.level = 1;
    line.lineImage = sharedText(values, NationalFlag);
    line.serverIp = values[Ip].toString();
    line.serverPort = constantServerPort;
    line.domain = values[Domain].toString();
    line.lineUuid = values[Uuid].toString();
    line.lineLoad = values[Load].toDouble();
    line.transDomain = sharedText(values, TransDomain);
    line.transIp = sharedText(values, TransIp);
    line.transPort = sharedText(values, TransPort);
    const Coordinates coordinates = coordinatesOf(values[SrvLocation].toString());
    line.lon = coordinates.lon;
    line.lat = coordinates.lat;
    return new LineInfo(std::move(line));
}

// Looking thirteen keys up costs half of the whole building. The servers of a reply carry the same
// keys in the same order, so each key is first compared with the one that stood at its position in
// the server before. The map shares the object's data.
LineBuilder::ServerValues LineBuilder::valuesOf(const QJsonObject &server)
{
    const QCborMap map = QCborMap::fromJsonObject(server);
    m_positions.resize(std::max(m_positions.size(), static_cast<std::size_t>(map.size())));
    ServerValues values;
    auto position = m_positions.begin();
    for (auto entry = map.constBegin(); entry != map.constEnd(); ++entry, ++position) {
        const QCborValue text = entry.key();
        if (text != position->text) {
            const auto *const found = std::find(keyTexts.begin(), keyTexts.end(), text.toString());
            *position = {text, static_cast<std::size_t>(found - keyTexts.begin())};
        }
        if (position->key != KeyCount) {
            values[position->key] = entry.value();
        }
    }
    return values;
}

// For values that many servers have in common, most often with the server before.
const QString &LineBuilder::sharedText(const ServerValues &values, Key key)
{
    LastValue &last = m_last[key];
    if (values[key] != last.value) {
        const QJsonValue value = values[key].toJsonValue();
        last.value = values[key];
        last.text = shared(
            key == CountryId || key == TransPort ? textOrNumberToText(value) : value.toString());
    }
    return last.text;
}

QString LineBuilder::shared(const QString &text)
{
    const auto known = m_texts.constFind(text);
    return known != m_texts.constEnd() ? known.value() : m_texts.insert(text, text).value();
}
