import QtQuick 2.9
import QtQuick.Window 2.2
import VORN.DataManager 1.0
import "qrc:/pages"
import "qrc:/parts"

// The uninstaller: it asks once, removes, and tells what was kept.
Rectangle {
    id: root

    property string page: "question" // then "removing", then "result"
    readonly property real dpiScale: DataManager.getDpiScale()

    signal send_drag(int x, int y)

    function startRemoval() {
        page = "removing";
        uninstaller.start();
    }

    function closeWindow() {
        if (page !== "removing")
            Qt.quit();
    }

    width: Theme.windowWidth
    height: Theme.pageHeight
    radius: Theme.pageRadius
    color: "transparent"
    focus: true
    Keys.onEscapePressed: closeWindow()
    onDpiScaleChanged: Theme.dpiScale = dpiScale
    Component.onCompleted: forceActiveFocus()

    MouseArea {
        property point grip

        anchors.fill: parent
        onPressed: grip = Qt.point(mouse.x, mouse.y)
        onPositionChanged: root.send_drag(mouse.x - grip.x, mouse.y - grip.y)
    }

    Image {
        source: "qrc:/image/bg.png"
    }

    QuestionPage {
        anchors.fill: parent
        visible: root.page === "question"
        onAccepted: root.startRemoval()
        onCancelled: root.closeWindow()
    }

    RemovingPage {
        anchors.fill: parent
        visible: root.page === "removing"
        percentage: uninstaller.percentage
        onComplete: {
            root.page = "result";
            root.forceActiveFocus();
        }
    }

    Loader {
        anchors.fill: parent
        active: root.page === "result"
        sourceComponent: ResultPage {
            kept: uninstaller.kept
            failed: uninstaller.failed
            lacksRights: uninstaller.lacksRights
            onClosed: root.closeWindow()
        }
    }

    TitleBar {
        width: root.width
        closable: root.page !== "removing"
        onMinimize: root.Window.window.showMinimized()
        onClose: root.closeWindow()
    }
}
