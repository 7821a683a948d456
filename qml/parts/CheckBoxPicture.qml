import QtQuick 2.9

// How a check box of this scene looks.
Item {
    property bool checked: false
    property bool pressed: false
    property string text: ""

    implicitWidth: label.x + label.implicitWidth
    implicitHeight: Math.max(20, label.implicitHeight)
    baselineOffset: label.y + label.baselineOffset

    Image {
        id: tick

        anchors.verticalCenter: parent.verticalCenter
        opacity: parent.pressed ? 0.7 : 1
        source: parent.checked ? "qrc:/image/checkBoxHigh.png" : "qrc:/image/checkBoxNor.png"
    }

    SceneText {
        id: label

        x: tick.width + 8
        anchors.verticalCenter: parent.verticalCenter
        baseSize: Theme.normalText
        text: parent.text
        // The check box tells it.
        Accessible.ignored: true
    }
}
