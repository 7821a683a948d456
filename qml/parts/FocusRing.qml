import QtQuick 2.9
import QtQuick.Window 2.2

// Drawn around its parent while the keyboard acts on that, or on another item. Whoever used the
// mouse sees the ring with the next key.
Rectangle {
    property Item focusItem: parent
    property bool byKeyboard: true
    readonly property bool hasFocus: focusItem.activeFocus

    function focusByMouse() {
        focusItem.forceActiveFocus(Qt.MouseFocusReason);
        byKeyboard = false;
    }

    anchors.fill: parent
    anchors.margins: -6
    visible: byKeyboard && hasFocus
    radius: parent.radius + 6
    color: "transparent"
    border.width: 2
    border.color: Theme.focusColor

    // A window that comes back goes on as it was left.
    onHasFocusChanged: {
        if (!hasFocus && focusItem.Window.active)
            byKeyboard = true;
    }
}
