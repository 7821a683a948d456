import QtQuick 2.9
import QtQuick.Controls 1.3
import QtQuick.Controls.Styles 1.2
import "../parts"

Button {
    id: root

    property url nomerPic
    property url hoverPic
    property url pressPic

    activeFocusOnPress: true

    function textLength() {
        return metrics.advanceWidth;
    }

    TextMetrics {
        id: metrics

        font.family: Theme.fontFamily
        text: root.text
    }

    style: ButtonStyle {
        background: Item {
            implicitWidth: picture.implicitWidth
            implicitHeight: picture.implicitHeight

            Image {
                id: picture

                source: !root.hovered ? root.nomerPic : root.pressed ? root.pressPic : root.hoverPic
            }
        }
        label: Text {
            text: control.text
            font: metrics.font
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
        }
    }
}
