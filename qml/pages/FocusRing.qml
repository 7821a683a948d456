import QtQuick 2.9

// Drawn around its parent while the keyboard acts on that.
Rectangle {
    property bool byKeyboard: true

    anchors.fill: parent
    anchors.margins: -4
    visible: byKeyboard && parent.activeFocus
    radius: parent.radius + 4
    color: "transparent"
    border.width: 2
    border.color: "white"
}
