import QtQuick 2.9
import QtQuick.Controls 1.3
import QtQuick.Controls.Styles 1.2
import "../parts"

Rectangle {
    id: root

    property string radioText: ""
    property alias exclusiveGroup: radio.exclusiveGroup
    property alias checked: radio.checked
    property color radioColor: "white"
    property color radioTextColor: "white"
    property real pointSize: 11

    signal click()

    function textLength() {
        return radio.__panel ? radio.__panel.textLength : 0;
    }

    function choose() {
        if (radio.checked)
            return;
        radio.checked = true;
        root.click();
    }

    function chooseByKey(event) {
        event.accepted = true;
        ring.byKeyboard = true;
        if (!event.isAutoRepeat)
            root.choose();
    }

    implicitWidth: radio.implicitWidth
    implicitHeight: radio.implicitHeight
    color: "transparent"
    activeFocusOnTab: true
    Accessible.role: Accessible.RadioButton
    Accessible.name: radioText
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.onPressAction: root.choose()
    Keys.onSpacePressed: chooseByKey(event)
    Keys.onReturnPressed: chooseByKey(event)
    Keys.onEnterPressed: chooseByKey(event)

    RadioButton {
        id: radio

        anchors.fill: parent
        activeFocusOnTab: false
        Accessible.ignored: true
        style: RadioButtonStyle {
            panel: Item {
                readonly property alias textLength: label.contentWidth

                implicitWidth: 18 + label.anchors.leftMargin + label.implicitWidth
                implicitHeight: Math.max(18, label.implicitHeight)

                Rectangle {
                    id: ring

                    width: height
                    height: parent.height
                    radius: height / 2
                    color: "transparent"
                    border.width: 1
                    border.color: root.radioColor

                    Rectangle {
                        anchors.centerIn: parent
                        visible: root.checked
                        width: Math.round(parent.width / 2)
                        height: width
                        radius: width / 2
                        color: root.radioColor
                    }
                }

                Text {
                    id: label

                    anchors.left: ring.right
                    anchors.leftMargin: 8
                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    text: root.radioText
                    textFormat: Text.RichText
                    wrapMode: Text.WordWrap
                    color: root.radioTextColor
                    font.family: Theme.fontFamily
                    font.pointSize: root.pointSize
                }
            }
        }
    }

    // Over the radio button, which would tell of a click on a checked one as well.
    MouseArea {
        anchors.fill: parent
        onPressed: ring.focusByMouse()
        onClicked: root.choose()
    }

    FocusRing {
        id: ring
    }
}
