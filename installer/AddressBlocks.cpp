#include "installer/AddressBlocks.h"

#include <QStringRef>

#include <algorithm>
#include <array>
#include <iterator>

namespace AddressBlocks {
namespace {

struct Row {
    quint32 first;
    quint32 sizeMinusOne;
};

constexpr Row rows[] = {
#include "AddressBlockRows.inc"
};
constexpr std::size_t rowCount = std::size(rows);

constexpr bool sortedAndDisjoint()
{
    for (std::size_t i = 1; i < rowCount; ++i) {
        // Touching ranges are to be merged: two of them have two more addresses that do not match.
        if (quint64(rows[i - 1].first) + rows[i - 1].sizeMinusOne + 1 >= rows[i].first) {
            return false;
        }
    }
    return true;
}
static_assert(sortedAndDisjoint(), "the search relies on the order of address_blocks.csv");

using Table = std::array<Range, rowCount>;

const Table &table()
{
    static const Table loaded = [] {
        Table filling{};
        std::transform(std::begin(rows), std::end(rows), filling.begin(), [](const Row &row) {
            return Range{row.first, row.first + row.sizeMinusOne};
        });
        return filling;
    }();
    return loaded;
}

// What QString::toInt() gives. Short runs of digits, which is all that real addresses have, are
// read without its locale machinery.
quint32 partValue(const QString &text, int from, int to)
{
    constexpr int safeDigits = 9;
    if (to - from <= safeDigits) {
        quint32 value = 0;
        int at = from;
        for (; at < to; ++at) {
            const uint digit = static_cast<uint>(text.at(at).unicode()) - uint('0');
            if (digit > 9) {
                break;
            }
            value = value * 10 + digit;
        }
        if (at == to) {
            return value;
        }
    }
    return static_cast<quint32>(QStringRef(&text, from, to - from).toInt());
}

} // namespace

const Range *ranges() { return table().data(); }

std::size_t count() { return rowCount; }

bool contains(quint32 address)
{
    const Table &blocks = table();
    const auto *const next = std::lower_bound(blocks.begin(), blocks.end(), address,
        [](const Range &range, quint32 value) { return range.first < value; });
    return next != blocks.begin() && (next - 1)->last > address;
}

quint32 fromDottedText(const QString &text)
{
    quint32 parts[4] = {};
    int dots = 0;
    int from = 0;
    const int size = text.size();
    for (int at = 0; at <= size; ++at) {
        if (at == size || text.at(at) == QLatin1Char('.')) {
            if (dots > 3) {
                return 0;
            }
            parts[dots++] = partValue(text, from, at);
            from = at + 1;
        }
    }
    if (dots != 4) {
        return 0;
    }
    return parts[0] << 24 | parts[1] << 16 | parts[2] << 8 | parts[3];
}

} // namespace AddressBlocks
