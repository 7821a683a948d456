#include "bench/functions/Allocations.h"
#include "bench/functions/LinesToFile.h"
#include "bench/functions/WithoutDebugLines.h"
#include "installer/AddressBlocks.h"
#include "installer/Operating.h"

#include <QStringList>

#include <random>

#include <benchmark/benchmark.h>

namespace {

// Addresses all over the four octets, the same in every run.
const QStringList &addresses()
{
    static const QStringList list = [] {
        std::mt19937 random(1);
        QStringList texts;
        for (int i = 0; i < 256; ++i) {
            const auto octet = [&random] { return random() % 256; };
            texts.append(QStringLiteral("%1.%2.%3.%4")
                             .arg(octet() % 223 + 1)
                             .arg(octet())
                             .arg(octet())
                             .arg(octet()));
        }
        return texts;
    }();
    return list;
}

// Takes the texts in turn.
template <typename Lookup> void measure(benchmark::State &state, const Lookup &lookup)
{
    const QStringList &texts = addresses();
    lookup(texts.first()); // whatever is loaded once is loaded now
    int at = 0;
    const std::size_t before = allocationsSoFar();
    for (auto _ : state) {
        benchmark::DoNotOptimize(lookup(texts.at(at)));
        at = (at + 1) % 256;
    }
    state.counters["allocations"] = static_cast<double>(allocationsSoFar() - before);
}

bool isInsidePlainly(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char('.'));
    quint32 address = 0;
    if (parts.size() == 4) {
        for (const QString &part : parts) {
            address = address << 8 | static_cast<quint32>(part.toInt());
        }
    }
    const AddressBlocks::Range *const ranges = AddressBlocks::ranges();
    for (std::size_t i = 0; i < AddressBlocks::count(); ++i) {
        if (ranges[i].first < address && ranges[i].last > address) {
            return true;
        }
    }
    return false;
}

bool isAllowed(const QString &text) { return Operating::EnableIPInBackCh(text); }

void region_plain(benchmark::State &state) { measure(state, isInsidePlainly); }
void region_written(benchmark::State &state)
{
    const LinesToFile log;
    measure(state, isAllowed);
}
void region_logged(benchmark::State &state) { measure(state, isAllowed); }
void region_quiet(benchmark::State &state)
{
    const WithoutDebugLines quiet;
    measure(state, isAllowed);
}

BENCHMARK(region_plain);
BENCHMARK(region_logged);
BENCHMARK(region_written);
BENCHMARK(region_quiet);

} // namespace
