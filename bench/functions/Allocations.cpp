#include "bench/functions/Allocations.h"

#include <atomic>

// glibc's own, which stay reachable when a program defines the functions that it calls.
extern "C" {
void *__libc_malloc(std::size_t size); // NOLINT
void *__libc_calloc(std::size_t count, std::size_t size); // NOLINT
void *__libc_realloc(void *pointer, std::size_t size); // NOLINT
}

namespace {
std::atomic<std::size_t> allocations{0};
}

extern "C" void *malloc(std::size_t size)
{
    allocations.fetch_add(1, std::memory_order_relaxed);
    return __libc_malloc(size);
}

extern "C" void *calloc(std::size_t count, std::size_t size)
{
    allocations.fetch_add(1, std::memory_order_relaxed);
    return __libc_calloc(count, size);
}

extern "C" void *realloc(void *pointer, std::size_t size)
{
    allocations.fetch_add(1, std::memory_order_relaxed);
    return __libc_realloc(pointer, size);
}

std::size_t allocationsSoFar() { return allocations.load(std::memory_order_relaxed); }
