import QtQuick 2.9
import VORN.DataManager 1.0
import "../parts"

// Tells that the installation failed, and why. Screen readers announce it when it appears: an alert,
// and in it a notification, since Orca speaks only those by itself.
Rectangle {
    id: root

    property string reason: ""

    visible: reason !== ""
    height: Math.max(156, texts.height + 32) // the height of the picture
    radius: 8
    color: Theme.noticeColor
    border.width: 2
    border.color: Theme.noticeEdgeColor
    Accessible.role: Accessible.AlertMessage
    Accessible.name: headline.text + ". " + reason

    Rectangle {
        id: sign

        x: 18
        anchors.verticalCenter: parent.verticalCenter
        width: 40
        height: 40
        radius: 20
        color: Theme.noticeEdgeColor

        SceneText {
            anchors.centerIn: parent
            baseSize: 20
            font.bold: true
            text: "!"
            Accessible.ignored: true
        }
    }

    Column {
        id: texts

        anchors.left: sign.right
        anchors.right: parent.right
        anchors.margins: 18
        anchors.verticalCenter: parent.verticalCenter
        spacing: 6
        Accessible.role: Accessible.Notification
        Accessible.name: root.Accessible.name

        SceneText {
            id: headline

            objectName: "failureHeadline"
            width: parent.width
            wrapMode: Text.Wrap
            baseSize: Theme.titleText
            font.bold: true
            color: Theme.noticeTextColor
            text: qsTranslate("main", "VornVPN could not be installed completely") + DataManager.emptyString
            Accessible.ignored: true
        }

        SceneText {
            objectName: "failureReason"
            width: parent.width
            wrapMode: Text.Wrap
            elide: Text.ElideRight
            maximumLineCount: 5
            textFormat: Text.PlainText
            color: Theme.noticeTextColor
            text: root.reason
            Accessible.ignored: true
        }
    }
}
