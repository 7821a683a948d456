#include "FuzzSetting.h"
#include "settings/DataManager.h"

#include <QFile>

// The first byte chooses the reader, the rest is its file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    prepareFuzzing();
    if (size == 0) {
        return 0;
    }
    static const char *const files[] = {"VornData.json", "VersionInfo.json", "CommonUsedLine.json",
        "UpdateInfo.json", "Channel.json"};
    const int chosen = data[0] % 5;
    QFile file(QString::fromLatin1(files[chosen]));
    if (!file.open(QIODevice::WriteOnly)) {
        __builtin_trap();
    }
    file.write(restOf(data, size));
    file.close();

    DataManager &store = *DataManager::getInstance();
    const QString here;
    const bool isRead[] = {store.readDataFromFile(here), store.readVersionInfoFromFile(here),
        store.readCommonUsedLineFromFile(here), store.readUpdateInfoFromFile(),
        store.readChannel(here)};
    if (!isRead[chosen]) {
        __builtin_trap();
    }
    store.changeLineUsedNum(1, QStringLiteral("area"));
    store.writeDataToFile(here);
    store.writeCommonUsedLineToFile(here);
    store.setCommonUsedAreaList({});
    for (const char *written : files) {
        QFile::remove(QString::fromLatin1(written));
    }
    return 0;
}
