import QtQuick 2.9
import "../parts"

FocusScope {
    id: root

    property url enterImage
    property url exitImge
    property alias echoMode: input.echoMode
    property string placeholderText: "hello world"
    property string accessibleName: placeholderText
    property string accessibleDescription: ""
    property alias font: input.font
    property alias text: input.text
    property alias color: input.color
    property alias textLeftPadding: input.leftPadding
    property alias validator: input.validator
    property real pointSize: 9

    function textLength() {
        return input.contentWidth;
    }

    width: 200
    height: 30

    NinePatch {
        anchors.fill: parent
        source: input.activeFocus ? root.enterImage : root.exitImge
    }

    Text {
        id: placeholder

        anchors.left: parent.left
        anchors.leftMargin: input.leftPadding
        anchors.verticalCenter: parent.verticalCenter
        opacity: input.activeFocus || input.text !== "" ? 0 : 1
        text: root.placeholderText
        color: "#666666"
        font: input.font
        onOpacityChanged: {
            if (opacity === 1)
                input.cursorVisible = false;
        }

        Behavior on opacity {
            NumberAnimation { duration: 200 }
        }
    }

    // A text that is longer than the field scrolls, and ends before the rounded border.
    Item {
        anchors.fill: parent
        anchors.leftMargin: 6
        anchors.rightMargin: 6
        clip: true

        TextInput {
            id: input

            x: -parent.x
            width: root.width
            height: root.height
            leftPadding: 30
            rightPadding: 8
            verticalAlignment: TextInput.AlignVCenter
            focus: true
            activeFocusOnTab: true
            selectByMouse: true
            selectionColor: "#5ead67"
            font.family: Theme.fontFamily
            font.pointSize: root.pointSize
            Accessible.role: Accessible.EditableText
            Accessible.name: root.accessibleName
            Accessible.description: root.accessibleDescription
        }
    }
}
