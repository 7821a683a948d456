#include "lines/LineBuilder.h"
#include "lines/LineCatalogue.h"
#include "lines/LineInfo.h"
#include "lines/LineInfoListModel.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <benchmark/benchmark.h>
#include <malloc.h>

namespace {

constexpr int countries = 100;
constexpr int serversEach = 100;
// The servers, the areas and their "Fastest" entries.
constexpr int records = countries * (serversEach + 2);

QString with(const char *text, int number) { return QString::fromLatin1(text).arg(number); }

QJsonObject server(int country, int number)
{
    const int id = country * serversEach + number;
    const QString ip = with("10.%1.", country) + with("%1.1", number);
    const QString place = with(R"({"lon":"%1.4",)", country) + with(R"("lat":"%1.5"})", number);
    return {{"country_id", with("%1", country)}, {"id", with("%1", id)},
        {"name", with("Server %1", id)}, {"name_en", with("Country %1", country)},
        {"national_flag", with("flag%1.png", country)}, {"ip", ip},
        {"domain", with("s%1.vornvpn.example", id)},
        {"uuid", with("00000000-0000-4000-8000-%1", 1'000'000 + id)}, {"load", number % 100},
        {"trans_domain", with("relay%1.vornvpn.example", country)},
        {"trans_ip", with("10.200.%1.1", country)}, {"trans_port", "8443"},
        {"srv_location", place}};
}

QJsonObject country(int number)
{
    QJsonArray servers;
    for (int i = 0; i < serversEach; ++i) {
        servers.append(server(number, i));
    }
    return {{"img", with("flag%1.png", number)}, {"name_en", with("Country %1", number)},
        {"lon", with("%1.5", number)}, {"lat", with("%1.25", number)}, {"servers", servers}};
}

const QByteArray &replyText()
{
    static const QByteArray text = [] {
        QJsonArray data;
        for (int i = 0; i < countries; ++i) {
            data.append(country(i));
        }
        const QJsonObject reply{{"code", 0}, {"msg", "ok"}, {"data", data}};
        return QJsonDocument(reply).toJson(QJsonDocument::Compact);
    }();
    return text;
}

QList<QObject *> build(const QJsonObject &reply)
{
    LineBuilder builder;
    QList<QObject *> areas;
    const QJsonArray data = reply.value(QLatin1String("data")).toArray();
    for (const QJsonValue &value : data) {
        areas.append(builder.areaByCountry(value.toObject()));
    }
    return areas;
}

void release(const QList<QObject *> &areas)
{
    LineCatalogue catalogue;
    catalogue.replace(areas);
}

// What stays when the reply is gone.
double bytesARecord()
{
    const std::size_t before = mallinfo2().uordblks;
    const QList<QObject *> areas = build(QJsonDocument::fromJson(replyText()).object());
    const std::size_t after = mallinfo2().uordblks;
    release(areas);
    return static_cast<double>(after - before) / records;
}

void catalogue_parse(benchmark::State &state)
{
    const QByteArray &text = replyText();
    for (auto _ : state) {
        const QJsonDocument document = QJsonDocument::fromJson(text);
        benchmark::DoNotOptimize(document.isObject());
    }
}

void catalogue_build(benchmark::State &state)
{
    const QJsonObject reply = QJsonDocument::fromJson(replyText()).object();
    for (auto _ : state) {
        const QList<QObject *> areas = build(reply);
        state.PauseTiming();
        release(areas);
        state.ResumeTiming();
    }
    state.counters["bytes_a_record"] = bytesARecord();
}

void catalogue_with_lines(benchmark::State &state)
{
    QJsonObject reply = QJsonDocument::fromJson(replyText()).object();
    QString message;
    for (auto _ : state) {
        LineInfoListModel model;
        model.createLineInfoModelListByCountry(reply, message);
        state.PauseTiming();
        release(model.getLineInfoModelList());
        state.ResumeTiming();
    }
}

BENCHMARK(catalogue_parse)->Unit(benchmark::kMillisecond);
BENCHMARK(catalogue_build)->Unit(benchmark::kMillisecond);
BENCHMARK(catalogue_with_lines)->Unit(benchmark::kMillisecond);

} // namespace
