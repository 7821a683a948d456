import QtQuick 2.9

// Drawn around its parent while the keyboard acts on that, or on another item.
Rectangle {
    property Item focusItem: parent
    property bool byKeyboard: true

    anchors.fill: parent
    anchors.margins: -4
    visible: byKeyboard && focusItem.activeFocus
    radius: parent.radius + 4
    color: "transparent"
    border.width: 2
    border.color: Theme.focusColor
}
