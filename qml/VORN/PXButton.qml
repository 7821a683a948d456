import QtQuick 2.9
import QtQuick.Controls 1.3
import QtQuick.Controls.Styles 1.2

Button {
    id: root

    property url nomerPic
    property url hoverPic
    property url pressPic

    style: ButtonStyle {
        background: Item {
            implicitWidth: picture.implicitWidth
            implicitHeight: picture.implicitHeight

            Image {
                id: picture

                source: !root.hovered ? root.nomerPic : root.pressed ? root.pressPic : root.hoverPic
            }
        }
    }
}
