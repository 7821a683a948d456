#include "FuzzSetting.h"
#include "installer/AddressBlocks.h"
#include "installer/Operating.h"

#include <QHostAddress>

// The input is the address that the server has seen. A well-formed one is read as Qt reads it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    prepareFuzzing();
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<int>(size));
    Operating::EnableIPInBackCh(text);
    const QHostAddress address(text);
    if (address.toString() == text && address.protocol() == QAbstractSocket::IPv4Protocol
        && AddressBlocks::fromDottedText(text) != address.toIPv4Address()) {
        __builtin_trap();
    }
    return 0;
}
