pragma Singleton
import QtQml 2.2

// The settings, and the note book of all stand-ins: what the scene asks of its back ends.
QtObject {
    property string notes
    readonly property string emptyString: ""

    readonly property var changeLanguage: function (index) {
        noting("changeLanguage")(index);
        languageChanged();
    }
    readonly property var readDataFromFile: noting("readDataFromFile")
    readonly property var setInstallPath: noting("setInstallPath")
    readonly property var setIsBootUp: noting("setIsBootUp")

    signal languageChanged

    function noting(name) {
        return function () {
            notes += name + "(" + Array.prototype.slice.call(arguments).join(", ") + ")\n";
            return true;
        };
    }
    function getDpiScale() { return 1; }
    function getSystemType() { return systemType; }
    function getSoftUseLanguage() { return "_xx"; }
    function languageTypeTransToInt() { return 0; }
    function getLanguageList() { return ["English", "中文繁體", "Indonesia", "Русский", "Deutsch"]; }
    function getDomainName() { return "http://host"; }
    function getPrivacyPolicyUrl() { return "/terms"; }
}
