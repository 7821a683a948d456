import QtQuick 2.9
import VORN.DataManager 1.0
import "../VORN"
import "../parts"

Rectangle {
    id: root

    property bool complete: false
    property bool waiting: false // for the copy, to start what it copies
    property string failure: ""
    property string notes: ""
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
        enabled: !root.waiting
        exitOpacity: root.waiting ? 0.7 : 1
        hoverOpacity: exitOpacity
        btText: (root.waiting ? qsTranslate("main", "Please wait...")
                              : qsTranslate("main", "Try It Now")) + DataManager.emptyString
        btIcon: "qrc:/image/useNowBtnBg.png"
        pressedIcon: "qrc:/image/installBtnBgHover.png"
        releaseIcon: "qrc:/image/useNowBtnBg.png"
        onBtTextChanged: {
            if (root.complete)
                root.buttonTextChanged(textLength());
        }
        onClicked: root.tryItNow()
    }

    // In the place of the picture that tells of success.
    FailureNotice {
        objectName: "failureNotice"
        anchors.horizontalCenter: parent.horizontalCenter
        y: 56
        width: 540
        reason: root.failure
    }

    Column {
        anchors.horizontalCenter: parent.horizontalCenter
        y: 358
        width: parent.width - 2 * Theme.margin
        spacing: 2

        SceneText {
            objectName: "waitingText"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            visible: root.waiting
            text: qsTranslate("main", "The files are still being copied.") + DataManager.emptyString
            Accessible.role: Accessible.Notification
        }

        SceneText {
            objectName: "notesText"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            visible: text !== ""
            wrapMode: Text.Wrap
            elide: Text.ElideRight
            maximumLineCount: 2
            textFormat: Text.PlainText
            color: Theme.quietTextColor
            text: root.notes
            Accessible.role: Accessible.Notification
        }
    }
}
