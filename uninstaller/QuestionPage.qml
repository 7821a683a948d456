import QtQuick 2.9
import VORN.DataManager 1.0
import "qrc:/parts"

Item {
    id: root

    signal accepted()
    signal cancelled()

    Image {
        anchors.horizontalCenter: parent.horizontalCenter
        y: 66
        width: 112
        height: 112
        sourceSize: Qt.size(112, 112)
        source: "qrc:/image/logo.png"
    }

    SceneText {
        objectName: "questionText"
        anchors.horizontalCenter: parent.horizontalCenter
        y: 190
        baseSize: Theme.headlineText
        font.bold: true
        text: qsTranslate("uninstall", "Uninstall VornVPN") + DataManager.emptyString
    }

    SceneText {
        objectName: "explanationText"
        anchors.horizontalCenter: parent.horizontalCenter
        y: 228
        width: 480
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        lineHeight: 1.2
        text: qsTranslate("uninstall", "This removes the client, its menu entry and its autostart entry. Files of your own in its directory are kept.") + DataManager.emptyString
    }

    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        y: 312
        spacing: 16

        ActionButton {
            objectName: "cancelButton"
            primary: false
            btText: qsTranslate("uninstall", "Cancel") + DataManager.emptyString
            onClicked: root.cancelled()
        }

        ActionButton {
            objectName: "uninstallButton"
            btText: qsTranslate("uninstall", "Uninstall") + DataManager.emptyString
            onClicked: root.accepted()
        }
    }
}
