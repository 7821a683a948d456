import QtQuick 2.9
import QtQuick.Window 2.2
import VORN.DataManager 1.0
import "qrc:/VORN"
import "qrc:/parts"

// The uninstaller: it asks once, removes, and tells what was kept.
Rectangle {
    id: root

    property string page: "question" // then "removing", then "result"
    readonly property real dpiScale: DataManager.getDpiScale()

    function startRemoval() {
        page = "removing";
        root.forceActiveFocus();
        uninstaller.start();
    }

    function closeWindow() {
        if (page !== "removing")
            Qt.quit();
    }

    width: 640
    height: 420
    radius: 12
    color: "transparent"
    focus: true
    Keys.onEscapePressed: closeWindow()
    onDpiScaleChanged: Theme.dpiScale = dpiScale
    Component.onCompleted: forceActiveFocus()

    Binding {
        target: root.Window.window
        property: "title"
        value: qsTranslate("uninstall", "Uninstall VornVPN") + DataManager.emptyString
    }

    MouseArea {
        property point grip

        anchors.fill: parent
        onPressed: grip = Qt.point(mouse.x, mouse.y)
        onPositionChanged: {
            root.Window.window.x += mouse.x - grip.x;
            root.Window.window.y += mouse.y - grip.y;
        }
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
            onClosed: root.closeWindow()
        }
    }

    Image {
        id: badge

        x: 20
        y: 14
        source: "qrc:/image/logoNew.png"
    }

    SceneText {
        anchors.left: badge.right
        anchors.leftMargin: 8
        anchors.verticalCenter: badge.verticalCenter
        baseSize: 14
        text: qsTranslate("main", "VornVPN") + DataManager.emptyString
    }

    PXNorButton {
        objectName: "miniButton"
        x: closeButton.x - width - 12
        anchors.verticalCenter: badge.verticalCenter
        width: 22
        height: 17
        radius: 3
        pressedColor: "#40ffffff"
        btIcon: "qrc:/image/mini.png"
        Accessible.name: qsTranslate("uninstall", "Minimize") + DataManager.emptyString
        onClicked: root.Window.window.showMinimized()
    }

    PXNorButton {
        id: closeButton

        objectName: "closeButton"
        x: root.width - width - 20
        anchors.verticalCenter: badge.verticalCenter
        width: 18
        height: 16
        radius: 3
        opacity: enabled ? 1 : 0.5
        enabled: root.page !== "removing"
        pressedColor: "#40ffffff"
        btIcon: "qrc:/image/main_close.png"
        Accessible.name: qsTranslate("uninstall", "Close") + DataManager.emptyString
        onClicked: root.closeWindow()
    }
}
