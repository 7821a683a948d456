#include "lines/LineBuilder.h"

#include <QJsonArray>
#include <QJsonDocument>

#include "lines/LineInfo.h"

namespace {

constexpr int serverPort = 3000; // the server sends none
constexpr int fastestPing = 101; // the entry stands in for lines not measured yet

QString textOf(const QJsonObject &object, QLatin1String key)
{
    return object.value(key).toString();
}

// The server sends some values as text in one release and as number in another.
QString textOrNumberAsText(const QJsonValue &value)
{
    return value.isDouble() ? value.toVariant().toString() : value.toString();
}

int textOrNumberAsInt(const QJsonValue &value)
{
    return value.isString() ? value.toString().toInt() : value.toInt();
}

double textOrNumberAsDouble(const QJsonValue &value)
{
    return value.isString() ? value.toString().toDouble() : value.toDouble();
}

void setCoordinates(LineInfo *record, const QJsonObject &object)
{
    record->setLon(textOrNumberAsDouble(object.value(QLatin1String("lon"))));
    record->setLat(textOrNumberAsDouble(object.value(QLatin1String("lat"))));
}

LineInfo *fastestEntry(const QString &area)
{
    auto *entry = new LineInfo;
    entry->setLineName(QStringLiteral("Fastest"));
    entry->setLineArea(area);
    entry->setLevel(1);
    entry->setPing(fastestPing);
    return entry;
}

} // namespace

LineInfo *LineBuilder::area(const QJsonObject &parent)
{
    auto *area = new LineInfo;
    area->setLevel(0);
    area->setLineArea(shared(textOf(parent, QLatin1String("name"))));

    QList<QObject *> lines;
    const QJsonArray servers = parent.value(QLatin1String("line")).toArray();
    lines.reserve(servers.size());
    for (const QJsonValue &value : servers) {
        const QJsonObject server = value.toObject();
        auto *line = new LineInfo;
        line->setLevel(1);
        line->setLineArea(area->getLineArea());
        line->setLineName(textOf(server, QLatin1String("name")));
        line->setLineId(textOrNumberAsInt(server.value(QLatin1String("id"))));
        line->setLineImage(shared(textOf(server, QLatin1String("national_flag"))));
        line->setServerIp(textOf(server, QLatin1String("ip")));
        line->setServerPort(serverPort);
        lines.append(line);
    }
    area->setChildItem(lines);
    return area;
}

LineInfo *LineBuilder::areaByCountry(const QJsonObject &country)
{
    auto *area = new LineInfo;
    area->setLevel(0);
    area->setLineImage(shared(textOf(country, QLatin1String("img"))));
    area->setLineArea(shared(textOf(country, QLatin1String("name_en"))));
    setCoordinates(area, country);

    QList<QObject *> lines = linesOfCountry(country);
    area->setChildItem4Load(lines);
    if (lines.size() >= 2) {
        lines.prepend(fastestEntry(area->getLineArea()));
    }
    area->setChildItem(lines);
    area->setServerNum(lines.size());
    return area;
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
    auto *line = new LineInfo;
    const QJsonValue id = server.value(QLatin1String("id"));
    const QString countryId = textOrNumberAsText(server.value(QLatin1String("country_id")));
    line->setLineName(countryId.isEmpty()
            ? textOf(server, QLatin1String("name")) + QLatin1String(" #") + textOrNumberAsText(id)
            : countryId + QLatin1String(" #") + QString::number(++counters[countryId]));
    line->setLineArea(shared(textOf(server, QLatin1String("name_en"))));
    line->setLineId(textOrNumberAsInt(id));
    line->setLevel(1);
    line->setLineImage(shared(textOf(server, QLatin1String("national_flag"))));
    line->setServerIp(textOf(server, QLatin1String("ip")));
    line->setServerPort(serverPort);
    line->setDomain(textOf(server, QLatin1String("domain")));
    line->setLineUuid(textOf(server, QLatin1String("uuid")));
    const QJsonValue load = server.value(QLatin1String("load"));
    if (!load.isUndefined()) {
        line->setLineLoad(load.toDouble());
    }
    line->setTransDomain(shared(textOf(server, QLatin1String("trans_domain"))));
    line->setTransIp(shared(textOf(server, QLatin1String("trans_ip"))));
    line->setTransPort(shared(textOrNumberAsText(server.value(QLatin1String("trans_port")))));

    // The server escapes the quotes of the inner text once or twice.
    QString location = textOf(server, QLatin1String("srv_location"));
    location.remove(QLatin1Char('\\'));
    const QJsonDocument document = QJsonDocument::fromJson(location.toUtf8());
    if (!document.isNull()) {
        setCoordinates(line, document.object());
    }
    return line;
}

QString LineBuilder::shared(const QString &text)
{
    const auto known = m_texts.constFind(text);
    if (known != m_texts.constEnd()) {
        return known.value();
    }
    m_texts.insert(text, text);
    return text;
}
