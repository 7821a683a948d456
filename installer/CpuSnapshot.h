#pragma once

// The first line of /proc/stat: the label "cpu" and the time spent in each state since boot, in
// clock ticks. The kernel counts in 64 bits; what exceeds 32 is lost.
struct CPUPACKED {
    char name[20];
    unsigned int user;
    unsigned int nice;
    unsigned int system;
    unsigned int idle;
    unsigned int iowait;
    unsigned int irq;
    unsigned int softirq;
};

// Always returns 0. When the file cannot be read, the snapshot keeps what it holds.
int get_cpuoccupy(CPUPACKED *cpu);

// The busy fraction (0 to 1) of the time between two snapshots, which is also printed to standard
// output. Counters that wrapped in between are taken modulo 2^32.
double cal_cpuoccupy(const CPUPACKED *first, const CPUPACKED *second);
