import QtQuick 2.9
import QtQuick.Window 2.2
import VORN.DataManager 1.0
import VORN.KQHttpManager 1.0
import VORN.Operating 1.0
import "pages"
import "parts"

// The installer: the first page with its path panel, the progress page, the finish page.
Rectangle {
    id: mainWindow

    property real default_pix_density: 4.86589250847806
    // One of the scene's own: the item's would shrink everything.
    property real scale: Screen.pixelDensity / default_pix_density
    property real dpiScale: DataManager.getDpiScale()
    property var languageList: DataManager.getLanguageList()
    readonly property bool onLinux: DataManager.getSystemType() === "linux"
    readonly property string defaultPath: (onLinux ? qsTranslate("main", "/opt/VornVPN")
        : qsTranslate("main", "C:\\Program Files\\VornVPN")) + DataManager.emptyString
    property string installPath: defaultPath // written by the field and the dialog
    property bool panelOpen: false
    property bool firstFrameDrawn: false // set by the window
    property bool usedByKeyboard: false
    property bool copying: false
    property bool startWanted: false // as soon as there is something to start
    property string copyFailure: ""
    property var entryFailures: []

    signal send_drag(int x, int y)
    signal miniWindows()
    signal closeWindows()
    signal hideWindows()

    // What the first frame does not show.
    function createPages() {
        initialPage.acceptCheckBox.active = true;
        pathPanel.active = true;
        installingPage.active = true;
        finishPage.active = true;
    }

    // For the user who is faster than the loaders.
    function completePages() {
        initialPage.acceptCheckBox.asynchronous = false;
        pathPanel.asynchronous = false;
        installingPage.asynchronous = false;
        finishPage.asynchronous = false;
        createPages();
    }

    function showPage(page) {
        const pages = [initialPage, installingPage, finishPage];
        for (let i = 0; i < pages.length; ++i)
            pages[i].visible = pages[i] === page;
        if (page !== initialPage)
            panelOpen = false;
        // The control that had the focus may be hidden now.
        mainWindow.forceActiveFocus();
    }

    function togglePathPanel() {
        completePages();
        panelOpen = !panelOpen;
        initialPage.languageBox.checked = false;
        if (pathPanel.activeFocus)
            mainWindow.forceActiveFocus();
        installingPage.visible = false;
        initialPage.visible = true;
    }

    // An empty field means what it shows then, and blanks around a path are not part of it.
    function installInto(path) {
        installPath = path.trim() || defaultPath;
    }

    function showInstallPath() {
        if (pathPanel.item && (pathPanel.item.typedPath.trim() || defaultPath) !== installPath)
            pathPanel.item.typedPath = installPath;
    }

    // The dialog is made when it is first asked for.
    function chooseDirectory() {
        pathDialog.active = true;
        pathDialog.item.openAt(outlook.folder);
    }

    // The finish button's text sets the width of this button, which is drawn like it.
    function widenQuickInstallButton(textLength) {
        initialPage.quickInstallButton.width = Math.max(192, textLength + 50);
    }

    function startInstallation() {
        if (!initialPage.accepted)
            return;
        usedByKeyboard = initialPage.quickInstallButton.focusedByKeyboard;
        completePages();
        progressTimer.start();
        if (onLinux)
            doInstallLinux();
        else
            doInstall();
    }

    function doInstallLinux() {
        const path = installPath;
        DataManager.readDataFromFile(path + "/");
        DataManager.changeLanguage(initialPage.languageBox.nowIndex);
        httpMangerId.pushLog("language", "", "1", DataManager.getSoftUseLanguage());
        DataManager.setInstallPath(path);
        // The copy takes the launchers along, so they are written first.
        operatingId.creatVornRunShell();
        operatingId.creatUninstallRunShell();
        copying = true;
        operatingId.copyDirectoryFilesThread(operatingId.getCurrentPath(), path, true);
        if (pathPanel.item.createShortcut)
            operatingId.addLinkToDeskTopLinux();
        if (pathPanel.item.startUpAutomatically) {
            operatingId.addAutoStartUp();
            DataManager.setIsBootUp(true);
        }
        showPage(installingPage);
    }

    function doInstall() {
        const path = installPath;
        const client = path + "/VORN.exe";
        DataManager.readDataFromFile(path + "/");
        DataManager.changeLanguage(initialPage.languageBox.nowIndex);
        httpMangerId.pushLog("language", "1", "", DataManager.getSoftUseLanguage());
        DataManager.setInstallPath(path);
        copying = true;
        operatingId.copyDirectoryFilesThread(operatingId.getCurrentPath(), path, true);
        if (pathPanel.item.createShortcut) {
            ["VornVpn", "VornVpnUninstall"].forEach(function(oldName) {
                operatingId.delLinkToAppLocation(oldName);
                operatingId.delDeskTopLink(oldName);
            });
            operatingId.addLinkToAppLocation(client, "VornVPN");
            operatingId.addLinkToDeskTop(client, "VornVPN");
            operatingId.addLinkToAppLocation(path + "/Uninstall.exe", "UninstallVornVPN");
        }
        if (pathPanel.item.startUpAutomatically) {
            operatingId.addStartTask("VornVpnStart", client);
            DataManager.setIsBootUp(true);
        }
        const key = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\VornVpn";
        const values = [
            ["DisplayName", "VornVPN"],
            ["UninstallString", path + "\\Uninstall.exe"],
            ["DisplayIcon", path + "\\Uninstall.exe"]
        ];
        values.forEach(function(value) {
            operatingId.removeRegValue(key, value[0]);
            operatingId.setRegValue(key, value[0], value[1]);
        });
        showPage(installingPage);
    }

    function showProgress() {
        const page = installingPage.item;
        page.showValue();
        if (page.value === 100)
            finishInstallation();
        page.value += 1;
    }

    function finishInstallation() {
        showPage(finishPage);
        progressTimer.stop();
        if (usedByKeyboard)
            finishPage.item.tryItNowButton.forceActiveFocus();
    }

    function endCopy(success, message) {
        if (!copying)
            return;
        copying = false;
        copyFailure = success ? "" : message;
        if (startWanted && success)
            startClient();
        else if (startWanted)
            failureTimer.start();
    }

    function tryItNow() {
        // The second half of a double click.
        if (startWanted)
            return;
        startWanted = true;
        if (!copying)
            startClient();
    }

    function startClient() {
        const path = installPath;
        httpMangerId.pushLog("start", "", "", "");
        operatingId.doOtherExe(path + (onLinux ? "/VornRun.sh" : "/VORN.exe"), []);
        quitTimer.start();
    }

    objectName: "mainWindow"
    width: Theme.windowWidth
    height: Theme.windowHeight
    color: "transparent"
    focus: true

    Component.onCompleted: forceActiveFocus()
    onInstallPathChanged: showInstallPath()
    onFirstFrameDrawnChanged: createPages()
    onDpiScaleChanged: Theme.dpiScale = dpiScale
    onWidthChanged: width = Theme.windowWidth
    onHeightChanged: height = Theme.windowHeight

    KQHttpManager {
        id: httpMangerId

        Component.onCompleted: {
            getDomainNameFromWeb();
            getLocalLanguage();
        }
        onDomainNameFromWebStatus: {
            checkRegion();
            getInitInfo();
        }
        onInitSystemStatus: initialPage.agreementButton.enabled = true
        onSendDefaultLanguage: {
            DataManager.changeLanguage(language);
            initialPage.showLanguage(language);
        }
    }

    Operating {
        id: operatingId

        onCopyDirectorySuccess: {}
        onSendSystemCmdResult: mainWindow.endCopy(success, message)
        onEntryNotWritten: mainWindow.entryFailures = mainWindow.entryFailures.concat(message)
    }

    // Hint and dialog speak the language in which they were made.
    Connections {
        target: DataManager
        function onLanguageChanged() {
            pathDialog.active = false;
            if (!progressTimer.running)
                outlook.look();
        }
    }

    PathOutlook {
        id: outlook

        operating: operatingId
        path: mainWindow.installPath
        wanted: mainWindow.panelOpen
        onFolderChanged: {
            if (pathDialog.item && String(folder) !== "")
                pathDialog.item.proposeLate(folder);
        }
    }

    Timer {
        id: progressTimer

        interval: 50
        repeat: true
        onTriggered: mainWindow.showProgress()
    }

    // Who has asked for the start of what could not be copied can read why it does not start.
    Timer {
        id: failureTimer

        interval: 5000
        onTriggered: mainWindow.startClient()
    }

    // A request that was just posted starts on the next turn of the event loop: quitting at once
    // would lose it.
    Timer {
        id: quitTimer

        interval: 250
        onTriggered: Qt.quit()
    }

    MouseArea {
        property point grip

        anchors.fill: parent
        acceptedButtons: Qt.LeftButton
        onPressed: {
            grip = Qt.point(mouse.x, mouse.y);
            mainWindow.forceActiveFocus();
        }
        onPositionChanged: mainWindow.send_drag(mouse.x - grip.x, mouse.y - grip.y)
    }

    // Fills the notches that the page's round corners leave above the open panel.
    Rectangle {
        y: Theme.pageHeight - 20
        width: parent.width
        height: 40
        visible: pathPanel.visible
        color: Theme.pageFootColor
    }

    InitialPage {
        id: initialPage

        objectName: "initialPage"
        width: parent.width
        height: Theme.pageHeight
        languageList: mainWindow.languageList
        panelOpen: mainWindow.panelOpen
        onLanguageChosen: DataManager.changeLanguage(row)
        onInstall: mainWindow.startInstallation()
        onOpenAgreement: operatingId.openUrl(DataManager.getDomainName() + DataManager.getPrivacyPolicyUrl())
        onTogglePanel: mainWindow.togglePathPanel()
    }

    Loader {
        id: pathPanel

        objectName: "pathPanel"
        y: Theme.pageHeight
        width: parent.width
        height: Theme.panelHeight
        visible: mainWindow.panelOpen
        active: false
        asynchronous: true
        source: "pages/PathPanel.qml"
        onLoaded: {
            item.typedPath = mainWindow.installPath;
            item.defaultPath = Qt.binding(function() { return mainWindow.defaultPath; });
            item.hint = Qt.binding(function() { return outlook.hint; });
            item.typedPathChanged.connect(function() { mainWindow.installInto(item.typedPath); });
            item.browse.connect(mainWindow.chooseDirectory);
        }
    }

    Loader {
        id: installingPage

        objectName: "installingPage"
        width: parent.width
        height: Theme.pageHeight
        visible: false
        active: false
        asynchronous: true
        source: "pages/InstallingPage.qml"
    }

    Loader {
        id: finishPage

        objectName: "finishPage"
        width: parent.width
        height: Theme.pageHeight
        visible: false
        active: false
        asynchronous: true
        source: "pages/FinishPage.qml"
        onLoaded: {
            item.waiting = Qt.binding(function() { return mainWindow.startWanted && mainWindow.copying; });
            item.failure = Qt.binding(function() { return mainWindow.copyFailure; });
            item.notes = Qt.binding(function() { return mainWindow.entryFailures.join(" "); });
            item.tryItNow.connect(mainWindow.tryItNow);
            item.buttonTextChanged.connect(mainWindow.widenQuickInstallButton);
        }
    }

    Loader {
        id: pathDialog

        active: false
        source: "pages/PathDialog.qml"
        onLoaded: item.pathChosen.connect(function(path) { pathPanel.item.typedPath = path; })
    }

    TitleBar {
        width: parent.width
        onMinimize: mainWindow.miniWindows()
        onClose: mainWindow.closeWindows()
    }
}
