import QtQuick 2.9
import QtQuick.Controls 1.3
import "../parts"

Rectangle {
    id: root

    property bool checked: false
    property ExclusiveGroup exclusiveGroup: null
    property string btMesg: ""
    property string btText: ""
    property color textColor: "#ff000000"
    property color pressedTextColor: textColor
    property color releaseTextColor: textColor
    property real fontSize: 20
    property color buttonColor: "#00000000"
    property color pressedColor: buttonColor
    property color releaseColor: buttonColor
    property url btIcon
    property url pressedIcon: btIcon
    property url releaseIcon: btIcon
    property color borderColor: textColor
    property color pressdBorderColor: pressedTextColor
    property alias wrapMode: label.wrapMode
    property alias elide: label.elide

    signal clicked()
    signal clickedWithMesg(string mesg)
    signal pressed()
    signal release()

    function textLength() {
        return label.contentWidth;
    }

    // In a group the others are unchecked by checking this one, so a click never unchecks it.
    function activate() {
        root.checked = root.exclusiveGroup ? true : !root.checked;
        root.clicked();
        root.clickedWithMesg(root.btMesg);
    }

    function pressByKey(event) {
        event.accepted = true;
        ring.byKeyboard = true;
        if (event.isAutoRepeat)
            return;
        root.pressed();
        root.release();
        root.activate();
    }

    width: 80
    height: 60
    color: area.pressed ? pressedColor : releaseColor
    border.width: 1
    border.color: area.pressed ? pressdBorderColor : borderColor
    focus: true
    activeFocusOnTab: true
    Accessible.role: Accessible.CheckBox
    Accessible.name: btText
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.onPressAction: root.activate()
    Accessible.onToggleAction: root.activate()

    onExclusiveGroupChanged: {
        if (exclusiveGroup)
            exclusiveGroup.bindCheckable(root);
    }
    Keys.onSpacePressed: pressByKey(event)
    Keys.onReturnPressed: pressByKey(event)
    Keys.onEnterPressed: pressByKey(event)

    Image {
        anchors.centerIn: parent
        source: root.checked || area.pressed ? root.pressedIcon : root.releaseIcon
    }

    Text {
        id: label

        anchors.fill: parent
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.WordWrap
        text: root.btText
        color: area.pressed ? root.pressedTextColor : root.releaseTextColor
        font.family: Theme.fontFamily
        font.pointSize: root.fontSize
    }

    MouseArea {
        id: area

        anchors.fill: parent
        hoverEnabled: true
        cursorShape: pressed ? Qt.ClosedHandCursor : Qt.OpenHandCursor
        onPressed: {
            ring.focusByMouse();
            root.pressed();
        }
        onReleased: root.release()
        onClicked: root.activate()
    }

    FocusRing {
        id: ring
    }
}
