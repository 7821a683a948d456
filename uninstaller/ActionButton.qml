import QtQuick 2.9
import VORN.DataManager 1.0
import "qrc:/VORN"

PXNorButton {
    property bool primary: true

    width: Math.max(172, textLength() + 50)
    height: 48
    radius: 24
    padOrStretch: false
    pointSize: 11 / DataManager.getDpiScale()
    border.width: primary ? 0 : 1
    borderColor: "#a5dfb0"
    textColor: primary ? "#246b36" : "white"
    pressedColor: primary ? "transparent" : "#30ffffff"
    btIcon: primary ? "qrc:/image/installBtnBg.png" : ""
    pressedIcon: primary ? "qrc:/image/installBtnBgHover.png" : ""
    releaseIcon: btIcon
}
