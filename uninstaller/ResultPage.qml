import QtQuick 2.9
import VORN.DataManager 1.0
import "qrc:/parts"

Item {
    id: root

    property var kept: []
    property var failed: []
    readonly property bool nothingLeft: kept.length + failed.length === 0
    readonly property int rowsOfList: kept.length > 0 && failed.length > 0 ? 3 : 8

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
        baseSize: 16
        font.bold: true
        text: (root.failed.length > 0 ? qsTranslate("uninstall", "VornVPN could not be removed completely")
                                      : qsTranslate("uninstall", "VornVPN has been removed")) + DataManager.emptyString
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    Rectangle {
        visible: !root.nothingLeft
        x: 60
        y: 108
        width: 520
        height: lists.height + 28
        radius: 8
        color: "#c0184f2a"

        Column {
            id: lists

            x: 18
            y: 14
            width: parent.width - 36
            spacing: 10

            NameList {
                objectName: "failedList"
                width: parent.width
                rows: root.rowsOfList
                heading: qsTranslate("uninstall", "These could not be removed:") + DataManager.emptyString
                names: root.failed
            }

            NameList {
                objectName: "keptList"
                width: parent.width
                rows: root.rowsOfList
                heading: qsTranslate("uninstall", "These files do not belong to VornVPN and were kept:") + DataManager.emptyString
                names: root.kept
            }
        }
    }

    ActionButton {
        objectName: "doneButton"
        anchors.horizontalCenter: parent.horizontalCenter
        y: root.nothingLeft ? 300 : 346
        btText: qsTranslate("uninstall", "Close") + DataManager.emptyString
        onClicked: root.closed()
    }
}
