// Runs the benchmarks and prints one line a row: the medians of a function and of its yardstick,
// measured in turns, and what stands between them.
//
//     vorn-bench [--rows=FILE] [Google Benchmark's options]
//
// FILE gets the rows with tabs between name, measured value, relation, goal and details, for
// scripts/bench.sh. A row without relation has no goal.
#include "bench/functions/Rows.h"

#include <QGuiApplication>
#include <QLoggingCategory>

#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace {

// The median of each benchmark that ran.
class Medians : public benchmark::ConsoleReporter {
public:
    Medians()
        : ConsoleReporter(OO_Tabular)
    {
    }

    void ReportRuns(const std::vector<Run> &runs) override
    {
        for (const Run &run : runs) {
            if (run.aggregate_name != "median") {
                continue;
            }
            const std::string name = run.run_name.function_name;
            const bool byClock = run.run_name.time_type != "";
            m_times[name] = byClock ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime();
            m_units[name] = benchmark::GetTimeUnitString(run.time_unit);
            for (const auto &[counter, value] : run.counters) {
                m_times[name + "/" + counter] = value.value;
                m_units[name + "/" + counter] = "";
            }
        }
        ConsoleReporter::ReportRuns(runs);
    }

    bool has(const std::string &name) const { return m_times.count(name) != 0; }
    double value(const std::string &name) const { return m_times.at(name); }
    std::string text(const std::string &name) const
    {
        char buffer[64];
        std::snprintf(buffer, sizeof buffer, "%.4g %s", value(name), m_units.at(name).c_str());
        return buffer;
    }

private:
    std::map<std::string, double> m_times;
    std::map<std::string, std::string> m_units;
};

void printRow(std::FILE *file, const Row &row, const Medians &medians)
{
    if (!medians.has(row.measured) || (*row.yardstick != '\0' && !medians.has(row.yardstick))) {
        return;
    }
    double value = medians.value(row.measured);
    std::string details = medians.text(row.measured);
    if (*row.yardstick != '\0') {
        value = row.kind == Row::Faster ? medians.value(row.yardstick) / value
                                        : value / medians.value(row.yardstick);
        details += " against " + medians.text(row.yardstick);
    }
    static const char *const relations[] = {"<=", ">=", "=", "-"};
    std::fprintf(file, "%s\t%.2f\t%s\t%g\t%s\n", row.name, value, relations[row.kind], row.goal,
        details.c_str());
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Debug lines are made, as in the delivered program, but not written.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    const QGuiApplication application(argc, argv);

    const char *rowsFile = nullptr;
    std::vector<char *> arguments;
    for (char *argument : std::vector<char *>(argv, argv + argc)) {
        if (std::strncmp(argument, "--rows=", 7) == 0) {
            rowsFile = argument + 7;
        } else {
            arguments.push_back(argument);
        }
    }
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        return 2;
    }
    Medians medians;
    benchmark::RunSpecifiedBenchmarks(&medians);

    std::FILE *file = rowsFile != nullptr ? std::fopen(rowsFile, "w") : stdout;
    if (file == nullptr) {
        std::perror(rowsFile);
        return 2;
    }
    for (const Row &row : rows) {
        printRow(file, row, medians);
    }
    return std::fclose(file) == 0 ? 0 : 2;
}
