#include "FuzzSetting.h"
#include "settings/DataManager.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    prepareFuzzing();
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<int>(size));
    DataManager &store = *DataManager::getInstance();
    if (store.analysisGoogleInfo(text) != text.contains(QLatin1String("--gl"))
        || store.analysisFacebookInfo(text) != text.contains(QLatin1String("--fb"))) {
        __builtin_trap();
    }
    return 0;
}
