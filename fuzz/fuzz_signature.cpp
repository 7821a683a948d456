#include "FuzzSetting.h"
#include "api/RequestSignature.h"

#include <QList>

// Lines of the input are names and values by turns.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    prepareFuzzing();
    const QList<QByteArray> parts =
        QByteArray(reinterpret_cast<const char *>(data), static_cast<int>(size)).split('\n');
    RequestHeaders headers;
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        headers.append({parts.at(i), parts.at(i + 1)});
    }
    const QByteArray text = signatureText(headers);
    if (!text.endsWith("Q#pd]3Ha>wz-8&Mv") || signatureOf(text).size() != 32) {
        __builtin_trap();
    }
    return 0;
}
