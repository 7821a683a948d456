#include "FuzzSetting.h"
#include "installer/AddressBlocks.h"
#include "installer/Operating.h"

#include <QStringList>

#include <algorithm>

namespace {

quint32 plainlyRead(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char('.'));
    quint32 address = 0;
    for (const QString &part : parts) {
        address = address << 8 | static_cast<quint32>(part.toInt());
    }
    return parts.size() == 4 ? address : 0;
}

bool isPlainlyFound(quint32 address)
{
    const AddressBlocks::Range *const ranges = AddressBlocks::ranges();
    return std::any_of(
        ranges, ranges + AddressBlocks::count(), [address](const AddressBlocks::Range &range) {
            return range.first < address && range.last > address;
        });
}

} // namespace

// The input is an address as the server or the lookup sends it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    prepareFuzzing();
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const quint32 address = plainlyRead(text);
    if (Operating::IPV4StringToInteger(text) != address
        || Operating::EnableIPInBackCh(text) == isPlainlyFound(address)) {
        __builtin_trap();
    }
    return 0;
}
