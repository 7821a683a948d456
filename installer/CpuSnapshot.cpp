#include "installer/CpuSnapshot.h"

#include "base/DebugLine.h"

#include <cstdio>

namespace {

unsigned int busyTicks(const CPUPACKED &cpu) { return cpu.user + cpu.nice + cpu.system; }

unsigned int allTicks(const CPUPACKED &cpu)
{
    return busyTicks(cpu) + cpu.idle + cpu.iowait + cpu.irq + cpu.softirq;
}

} // namespace

int get_cpuoccupy(CPUPACKED *cpu)
{
    std::FILE *file = std::fopen("/proc/stat", "r");
    if (file == nullptr) {
        debugLine() << "/proc/stat open failed";
        return 0;
    }
    char line[256] = {};
    if (std::fgets(line, sizeof line, file) != nullptr) {
        std::sscanf(line, "%19s %u %u %u %u %u %u %u", cpu->name, &cpu->user, &cpu->nice,
            &cpu->system, &cpu->idle, &cpu->iowait, &cpu->irq, &cpu->softirq);
    }
    std::fclose(file);
    return 0;
}

double cal_cpuoccupy(const CPUPACKED *first, const CPUPACKED *second)
{
    const unsigned int busy = busyTicks(*second) - busyTicks(*first);
    const unsigned int all = allTicks(*second) - allTicks(*first);
    const double fraction = static_cast<double>(busy) / all;
    std::printf("%.3f\n", fraction);
    return fraction;
}
