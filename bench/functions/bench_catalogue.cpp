#include "bench/functions/LinesToFile.h"
#include "bench/functions/WithoutDebugLines.h"
#include "lines/LineCatalogue.h"
#include "lines/LineInfo.h"
#include "lines/LineInfoListModel.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

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

QByteArray replyOf(int countryCount)
{
    QJsonArray data;
    for (int i = 0; i < countryCount; ++i) {
        data.append(country(i));
    }
    const QJsonObject reply{{"code", 0}, {"msg", "ok"}, {"data", data}};
    return QJsonDocument(reply).toJson(QJsonDocument::Compact);
}

const QByteArray &replyText()
{
    static const QByteArray text = replyOf(countries);
    return text;
}

QList<QObject *> build(QJsonObject reply)
{
    LineInfoListModel model;
    QString message;
    model.createLineInfoModelListByCountry(reply, message);
    return model.getLineInfoModelList();
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

void measureBuilding(benchmark::State &state)
{
    const QJsonObject reply = QJsonDocument::fromJson(replyText()).object();
    for (auto _ : state) {
        const QList<QObject *> areas = build(reply);
        state.PauseTiming();
        release(areas);
        state.ResumeTiming();
    }
}

void catalogue_quiet(benchmark::State &state)
{
    const WithoutDebugLines quiet;
    measureBuilding(state);
    state.counters["bytes_a_record"] = bytesARecord();
}

void catalogue_logged(benchmark::State &state)
{
    const LinesToFile log;
    measureBuilding(state);
}

// What a reply takes at most, itself included, from its last byte to the finished records. In a
// process of its own: the peak is that of a whole process.
double peakOver(const QByteArray &text)
{
    malloc_trim(0);
    int result[2] = {-1, -1};
    if (pipe(result) != 0) {
        return 0;
    }
    if (const pid_t child = fork(); child != 0) {
        double peak = 0;
        if (child < 0 || read(result[0], &peak, sizeof peak) != sizeof peak) {
            peak = 0;
        }
        close(result[0]);
        close(result[1]);
        waitpid(child, nullptr, 0);
        return peak;
    }
    const auto kibibytes = [] {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        return usage.ru_maxrss;
    };
    const long before = kibibytes();
    const LinesToFile log;
    QByteArray body = text;
    body.detach();
    build(QJsonDocument::fromJson(body).object());
    const double peak = static_cast<double>(kibibytes() - before) * 1024;
    _exit(write(result[1], &peak, sizeof peak) == sizeof peak ? 0 : 1);
}

void catalogue_memory(benchmark::State &state)
{
    constexpr int wanted = 30'000'000;
    static const QByteArray text = replyOf(wanted / (replyText().size() / countries));
    double peak = 0;
    for (auto _ : state) {
        peak = peakOver(text);
    }
    state.counters["peak_over_size"] = peak / text.size();
}

BENCHMARK(catalogue_parse)->Unit(benchmark::kMillisecond);
BENCHMARK(catalogue_quiet)->Unit(benchmark::kMillisecond);
BENCHMARK(catalogue_logged)->Unit(benchmark::kMillisecond);
BENCHMARK(catalogue_memory)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace
