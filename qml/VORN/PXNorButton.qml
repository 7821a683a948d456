import QtQuick 2.9
import "../parts"

Rectangle {
    id: root

    property string btMesg: ""
    property alias btText: label.text
    // 0: label in the middle; -1: label at the left, no icon; else icon at the left, and the label
    // this far right of it.
    property real textLeftMargin: 0
    property color textColor: "#ff000000"
    property color pressedTextColor: textColor
    property color releaseTextColor: textColor
    property color hoverTextColor: buttonColor
    property real pointSize: 14
    property color buttonColor: "#00000000"
    property color pressedColor: buttonColor
    property color releaseColor: buttonColor
    property color disableColor: buttonColor
    property alias btIcon: icon.source
    property url pressedIcon
    property url releaseIcon
    property url hoverIcon
    property alias wrapMode: label.wrapMode
    property alias elide: label.elide
    property alias bold: label.font.bold
    property bool textVisible: true
    // Not the item's own: a disabled button goes on telling pressed() and release().
    property bool enabled: true
    property bool padOrStretch: true
    property bool underLine: false
    property real hoverOpacity: 1
    property real exitOpacity: 1
    property color borderColor: textColor
    property color pressdBorderColor: pressedTextColor

    readonly property alias focusedByKeyboard: ring.visible

    signal clicked()
    signal clickedWithMesg(string mesg)
    signal pressed()
    signal release()
    signal mentered()
    signal mexited()

    function textLength() {
        return label.contentWidth;
    }

    function activate() {
        if (!root.enabled)
            return;
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

    width: 120
    height: 60
    color: internal.phase === "" ? buttonColor
                                 : !root.enabled ? disableColor
                                                 : internal.phase === "in" ? pressedColor : releaseColor
    opacity: internal.phase === "in" ? hoverOpacity : exitOpacity
    // Where it is while nothing is pressed.
    baselineOffset: (height - label.height) / 2 + label.baselineOffset
    border.width: 0
    border.color: area.pressed ? pressdBorderColor : borderColor
    focus: true
    activeFocusOnTab: root.enabled || root.activeFocus
    Accessible.role: Accessible.Button
    Accessible.name: btText
    Accessible.onPressAction: root.activate()

    // Taken once: a binding to btIcon would follow what the mouse makes of it, and the resting
    // icon would never come back.
    Component.onCompleted: {
        const resting = btIcon;
        if (String(pressedIcon) === "")
            pressedIcon = resting;
        if (String(releaseIcon) === "")
            releaseIcon = resting;
        if (String(hoverIcon) === "")
            hoverIcon = resting;
    }
    Keys.onSpacePressed: pressByKey(event)
    Keys.onReturnPressed: pressByKey(event)
    Keys.onEnterPressed: pressByKey(event)

    QtObject {
        id: internal

        property string phase: "" // "in" and "out" tell where the mouse went last
    }

    Item {
        id: iconFrame

        width: root.textLeftMargin === 0 ? root.width : root.height
        height: root.height
        visible: root.textLeftMargin !== -1

        NinePatch {
            id: icon

            readonly property bool stretched: root.textLeftMargin === 0 && !root.padOrStretch

            anchors.centerIn: parent
            width: stretched ? parent.width : implicitWidth
            height: stretched ? parent.height : implicitHeight
            opacity: area.pressed ? 0.8 : 1
        }
    }

    Text {
        id: label

        readonly property real start: root.textLeftMargin === -1 ? 0
                                                                 : iconFrame.width + root.textLeftMargin
        readonly property bool fitted: wrapMode !== Text.NoWrap || elide !== Text.ElideNone

        x: root.textLeftMargin === 0 ? (root.width - width) / 2 : start
        y: (root.height - height) / 2 + (area.pressed ? 1 : 0)
        width: !fitted ? undefined : root.textLeftMargin === 0 ? root.width : root.width - start
        horizontalAlignment: fitted && root.textLeftMargin === 0 ? Text.AlignHCenter : Text.AlignLeft
        visible: root.textVisible
        color: internal.phase === "" ? root.textColor
                                     : internal.phase === "in" ? root.pressedTextColor
                                                               : root.releaseTextColor
        font.family: Theme.fontFamily
        font.pointSize: root.pointSize
        font.underline: root.underLine
    }

    MouseArea {
        id: area

        anchors.fill: parent
        hoverEnabled: true
        cursorShape: root.enabled ? Qt.PointingHandCursor : Qt.ArrowCursor
        onEntered: {
            internal.phase = "in";
            root.btIcon = root.pressedIcon;
            root.mentered();
        }
        onExited: {
            internal.phase = "out";
            root.btIcon = root.releaseIcon;
            root.mexited();
        }
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
