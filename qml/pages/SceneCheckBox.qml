import QtQuick 2.9
import QtQuick.Controls 1.3
import QtQuick.Controls.Styles 1.2

CheckBox {
    id: root

    function toggleByKey(event) {
        event.accepted = true;
        if (!event.isAutoRepeat)
            checked = !checked;
    }

    checked: true
    Keys.onReturnPressed: toggleByKey(event)
    Keys.onEnterPressed: toggleByKey(event)

    style: CheckBoxStyle {
        panel: Item {
            implicitWidth: label.x + label.implicitWidth
            implicitHeight: Math.max(20, label.implicitHeight)

            Image {
                id: tick

                readonly property real radius: 3

                anchors.verticalCenter: parent.verticalCenter
                opacity: root.pressed ? 0.7 : 1
                source: root.checked ? "qrc:/image/checkBoxHigh.png" : "qrc:/image/checkBoxNor.png"
            }

            SceneText {
                id: label

                x: tick.width + 8
                anchors.verticalCenter: parent.verticalCenter
                text: root.text
            }

            Rectangle {
                anchors.fill: parent
                anchors.margins: -5
                visible: root.activeFocus
                radius: 5
                color: "transparent"
                border.width: 2
                border.color: "white"
            }
        }
    }
}
