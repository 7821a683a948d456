#pragma once

#include <QString>

#include <cstddef>

// The national address-allocation table: IPv4 ranges in host integer form (first octet most
// significant), sorted and disjoint. It is compiled from address_blocks.csv.
namespace AddressBlocks {

struct Range {
    quint32 first;
    quint32 last; // inclusive
};

// The process-wide array, filled by whoever asks first; safe on every thread.
const Range *ranges();
std::size_t count();

// Whether the address lies strictly between the ends of a range: the first and the last address of
// a range are not inside.
bool contains(quint32 address);

// The integer of four parts between dots. 0 unless there are exactly four; a part that is no
// decimal int counts as 0, one above 255 spills its bits into its left neighbours.
// Allocates nothing.
quint32 fromDottedText(const QString &text);

} // namespace AddressBlocks
