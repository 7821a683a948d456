#include "FuzzSetting.h"
#include "crypto/Encryption.h"

#include <stdexcept>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    prepareFuzzing();
    const std::string text(reinterpret_cast<const char *>(data), size);
    Encryption cipher;
    const std::string bytes = cipher.base64_decode(text);
    if (bytes.size() > text.size() / 4 * 3 + 2) {
        __builtin_trap();
    }
    try {
        cipher.decode(text);
    } catch (const std::out_of_range &) {
        if (bytes.size() < 13 || bytes.size() > 25) {
            __builtin_trap();
        }
    }
    if (cipher.decode(cipher.encode(text)) != text) {
        __builtin_trap();
    }
    return 0;
}
