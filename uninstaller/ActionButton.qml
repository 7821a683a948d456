import QtQuick 2.9
import "qrc:/VORN"
import "qrc:/parts"

PXNorButton {
    property bool primary: true

    width: Math.max(172, textLength() + 50)
    height: Theme.buttonHeight
    radius: height / 2
    padOrStretch: false
    pointSize: Theme.points(Theme.normalText)
    border.width: primary ? 0 : 1
    borderColor: Theme.outlineColor
    textColor: primary ? Theme.buttonTextColor : Theme.textColor
    pressedColor: primary ? "transparent" : Theme.hoverColor
    btIcon: primary ? "qrc:/image/installBtnBg.png" : ""
    pressedIcon: primary ? "qrc:/image/installBtnBgHover.png" : ""
    releaseIcon: btIcon
}
