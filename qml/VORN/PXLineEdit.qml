import QtQuick 2.9
import "../parts"

FocusScope {
    id: root

    property url enterImage
    property url exitImge
    property url errorImge
    property alias echoMode: input.echoMode
    property alias font: input.font
    property alias text: input.text
    property alias textLeftPadding: input.leftPadding
    property alias validator: input.validator
    property string placeholderText: "hello world"
    property alias errorText: caption.text
    property real pointSize: 9
    property bool inputError: false

    function textLength() {
        return input.contentWidth;
    }

    width: 364
    height: 45

    onInputErrorChanged: {
        if (!inputError)
            errorText = Qt.binding(function() { return root.placeholderText; });
    }

    NinePatch {
        anchors.fill: parent
        source: !input.activeFocus ? root.exitImge : root.inputError ? root.errorImge : root.enterImage
    }

    Text {
        id: caption

        x: 14
        width: implicitWidth + 12
        visible: input.activeFocus || input.text !== ""
        text: root.placeholderText
        color: root.inputError ? "#c84031" : input.activeFocus ? "#58aa64" : "#666666"
        font.family: Theme.fontFamily
        font.pointSize: root.pointSize - 2
    }

    Text {
        anchors.left: parent.left
        anchors.leftMargin: input.leftPadding
        anchors.verticalCenter: parent.verticalCenter
        opacity: input.activeFocus || input.text !== "" ? 0 : 1
        text: root.placeholderText
        color: "#666666"
        font: input.font

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
            verticalAlignment: TextInput.AlignVCenter
            focus: true
            activeFocusOnTab: true
            selectByMouse: true
            selectionColor: "#5ead67"
            font.family: Theme.fontFamily
            font.pointSize: root.pointSize
            Accessible.role: Accessible.EditableText
            Accessible.name: root.placeholderText
        }
    }
}
