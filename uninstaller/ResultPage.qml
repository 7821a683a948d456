import QtQuick 2.9
import VORN.DataManager 1.0
import "qrc:/parts"

Item {
    id: root

    property var kept: []
    property var failed: []
    property bool lacksRights
    readonly property bool nothingLeft: kept.length + failed.length === 0

    signal closed()

    Image {
        visible: root.nothingLeft
        source: "qrc:/image/installSuccessBg.png"
    }

    SceneText {
        objectName: "resultText"
        anchors.horizontalCenter: parent.horizontalCenter
        y: root.nothingLeft ? 236 : 64
        width: 584
        horizontalAlignment: Text.AlignHCenter
        fontSizeMode: Text.HorizontalFit
        minimumPointSize: 8
        baseSize: Theme.headlineText
        font.bold: true
        text: (root.failed.length > 0 ? qsTranslate("uninstall", "VornVPN could not be removed completely")
                                      : qsTranslate("uninstall", "VornVPN has been removed")) + DataManager.emptyString
        Accessible.role: Accessible.Notification
    }

    Rectangle {
        visible: !root.nothingLeft
        x: 60
        y: 108
        width: 520
        height: Math.min(218, list.wantedHeight + 28)
        radius: 8
        color: Theme.boxColor

        NameList {
            id: list

            anchors.fill: parent
            anchors.margins: 14
            failed: root.failed
            kept: root.kept
            lacksRights: root.lacksRights
        }

        FocusRing {
            focusItem: list.view
        }
    }

    ActionButton {
        objectName: "doneButton"
        anchors.horizontalCenter: parent.horizontalCenter
        y: root.nothingLeft ? 300 : 346
        btText: qsTranslate("main", "Close") + DataManager.emptyString
        onClicked: root.closed()
    }
}
