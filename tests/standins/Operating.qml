import QtQml 2.2
import VORN.DataManager 1.0

QtObject {
    readonly property var creatVornRunShell: DataManager.noting("creatVornRunShell")
    readonly property var creatUninstallRunShell: DataManager.noting("creatUninstallRunShell")
    readonly property var copyDirectoryFilesThread: DataManager.noting("copyDirectoryFilesThread")
    readonly property var addLinkToDeskTopLinux: DataManager.noting("addLinkToDeskTopLinux")
    readonly property var addAutoStartUp: DataManager.noting("addAutoStartUp")
    readonly property var addLinkToDeskTop: DataManager.noting("addLinkToDeskTop")
    readonly property var delDeskTopLink: DataManager.noting("delDeskTopLink")
    readonly property var addLinkToAppLocation: DataManager.noting("addLinkToAppLocation")
    readonly property var delLinkToAppLocation: DataManager.noting("delLinkToAppLocation")
    readonly property var addStartTask: DataManager.noting("addStartTask")
    readonly property var setRegValue: DataManager.noting("setRegValue")
    readonly property var removeRegValue: DataManager.noting("removeRegValue")
    readonly property var doOtherExe: DataManager.noting("doOtherExe")
    readonly property var openUrl: DataManager.noting("openUrl")
    readonly property var lookAtInstallPath: DataManager.noting("lookAtInstallPath")

    signal copyDirectorySuccess
    signal sendSystemCmdResult(bool success, string message)
    signal entryNotWritten(string message)
    signal installPathLookedAt(string path, string hint, url folder)

    function getCurrentPath() { return "/bundle"; }
}
