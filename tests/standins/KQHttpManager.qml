import QtQml 2.2
import VORN.DataManager 1.0

QtObject {
    readonly property var getDomainNameFromWeb: DataManager.noting("getDomainNameFromWeb")
    readonly property var getLocalLanguage: DataManager.noting("getLocalLanguage")
    readonly property var checkRegion: DataManager.noting("checkRegion")
    readonly property var getInitInfo: DataManager.noting("getInitInfo")
    readonly property var pushLog: DataManager.noting("pushLog")

    signal domainNameFromWebStatus
    signal initSystemStatus(int code)
    signal sendDefaultLanguage(int language)
}
