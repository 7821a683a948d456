import QtQuick 2.9
import VORN.DataManager 1.0
import "../VORN"
import "../parts"

Rectangle {
    id: root

    property bool complete: false
    property alias tryItNowButton: tryItNowButton

    signal tryItNow()
    signal buttonTextChanged(real textLength)

    radius: Theme.pageRadius
    color: Theme.pageColor

    Component.onCompleted: complete = true

    Image {
        anchors.fill: parent
        source: root.visible ? "qrc:/image/installSuccessBg.png" : ""
    }

    SceneText {
        objectName: "finishText"
        anchors.horizontalCenter: parent.horizontalCenter
        y: 236
        baseSize: Theme.headlineText
        font.bold: true
        text: qsTranslate("main", "Finish Installation") + DataManager.emptyString
    }

    PXNorButton {
        id: tryItNowButton

        objectName: "tryItNowButton"
        x: (parent.width - width) / 2
        y: 300
        width: Math.max(192, textLength() + 50)
        height: Theme.buttonHeight
        radius: height / 2
        padOrStretch: false
        pointSize: Theme.points(13)
        textColor: Theme.buttonTextColor
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
