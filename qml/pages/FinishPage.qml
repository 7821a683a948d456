import QtQuick 2.9
import VORN.DataManager 1.0
import "../VORN"

Rectangle {
    id: root

    readonly property real dpiScale: DataManager.getDpiScale()
    property bool complete: false
    property alias tryItNowButton: tryItNowButton

    signal tryItNow()
    signal buttonTextChanged(real textLength)

    radius: 12
    color: "#2a7039"

    Component.onCompleted: complete = true

    Image {
        anchors.fill: parent
        source: root.visible ? "qrc:/image/installSuccessBg.png" : ""
    }

    SceneText {
        objectName: "finishText"
        anchors.horizontalCenter: parent.horizontalCenter
        y: 236
        baseSize: 16
        font.bold: true
        text: qsTranslate("main", "Finish Installation") + DataManager.emptyString
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    PXNorButton {
        id: tryItNowButton

        objectName: "tryItNowButton"
        x: (parent.width - width) / 2
        y: 300
        width: Math.max(192, textLength() + 50)
        height: 48
        radius: 24
        padOrStretch: false
        pointSize: 13 / root.dpiScale
        textColor: "#246b36"
        btText: qsTranslate("main", "Try It Now") + DataManager.emptyString
        btIcon: "qrc:/image/useNowBtnBg.png"
        pressedIcon: "qrc:/image/installBtnBgHover.png"
        releaseIcon: "qrc:/image/useNowBtnBg.png"
        onBtTextChanged: {
            if (root.complete)
                root.buttonTextChanged(textLength());
        }
        onClicked: root.tryItNow()
    }
}
