#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>

// What the targets stand on: an application object, no debug output, no address to reach anybody
// at, and a working directory of their own. Call it first in every run; only the first call works.
void prepareFuzzing();

// The rest of an input behind its first byte, which chooses what to feed it to.
inline QByteArray restOf(const std::uint8_t *data, std::size_t size)
{
    return size < 2
        ? QByteArray()
        : QByteArray(reinterpret_cast<const char *>(data) + 1, static_cast<int>(size) - 1);
}
