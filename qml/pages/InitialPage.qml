import QtQuick 2.9
import VORN.DataManager 1.0
import "../VORN"
import "../parts"

Rectangle {
    id: root

    property var languageList: []
    property bool panelOpen: false
    property alias languageBox: languageBox
    property alias quickInstallButton: quickInstallButton
    property alias acceptCheckBox: acceptCheckBox
    readonly property bool accepted: acceptCheckBox.item ? acceptCheckBox.item.checked : true
    property alias agreementButton: agreementButton

    signal languageChosen(int row)
    signal install()
    signal openAgreement()
    signal togglePanel()

    function showLanguage(index) {
        languageBox.nowIndex = index;
        languageBox.textForShow = languageList[index];
    }

    // Not a binding: the finish button sets this width too.
    function fitQuickInstallButton() {
        quickInstallButton.width = Math.max(182, quickInstallButton.textLength() + 50);
    }

    radius: Theme.pageRadius
    color: background.status === Image.Ready ? "transparent" : Theme.pageColor

    Image {
        id: background

        anchors.fill: parent
        asynchronous: true
        source: "qrc:/image/bg.png"
    }

    Image {
        x: 220
        y: 78
        width: 200
        height: 200
        asynchronous: true
        source: "qrc:/image/logo.png"
    }

    PXComboxNew {
        id: languageBox

        objectName: "languageBox"
        x: 620 - width
        y: 50
        z: 1
        width: Math.max(90, textLength() + 20)
        boxheight: 26
        popListWdith: width
        popListHeight: 126
        popTopMargin: 6
        positonY: 0
        textSize: Theme.points(Theme.smallText)
        padOrStretch: false
        nomerPic: "qrc:/image/comboxBg.png"
        pressPic: "qrc:/image/comboxBgHover.png"
        hoverPic: pressPic
        backgroundImage: "qrc:/image/comboxPopBg.png"
        dropDownImage: "qrc:/image/dropDown.png"
        sliderImage: "qrc:/image/slideBg.png"
        modelList: root.languageList
        nowIndex: DataManager.languageTypeTransToInt(DataManager.getSoftUseLanguage())
        Accessible.name: qsTranslate("main", "Interface language") + DataManager.emptyString
        Accessible.description: textForShow
        Component.onCompleted: textForShow = modelList[nowIndex]
        onSendData: root.languageChosen(index)
        onActiveFocusChanged: {
            if (!activeFocus)
                checked = false;
        }
    }

    PXNorButton {
        id: quickInstallButton

        objectName: "quickInstallButton"
        x: (parent.width - width) / 2
        y: 296
        width: 182
        height: Theme.buttonHeight
        radius: height / 2
        padOrStretch: false
        pointSize: Theme.points(Theme.normalText)
        textColor: Theme.buttonTextColor
        btText: qsTranslate("main", "Quick Install") + DataManager.emptyString
        btIcon: "qrc:/image/installBtnBg.png"
        pressedIcon: "qrc:/image/installBtnBgHover.png"
        releaseIcon: "qrc:/image/installBtnBg.png"
        onBtTextChanged: root.fitQuickInstallButton()
        onClicked: root.install()
        // The text has no length before.
        Component.onCompleted: root.fitQuickInstallButton()
    }

    Row {
        id: agreementRow

        x: Theme.margin
        y: Theme.footTop
        height: 26
        spacing: 12

        // The check box is made after the first frame, which shows a picture of it.
        Loader {
            id: acceptCheckBox

            anchors.verticalCenter: parent.verticalCenter
            active: false
            asynchronous: true
            visible: status === Loader.Ready
            source: "../parts/SceneCheckBox.qml"
            onLoaded: {
                item.objectName = "acceptCheckBox";
                item.text = Qt.binding(function() { return acceptPicture.text; });
            }
        }

        CheckBoxPicture {
            id: acceptPicture

            anchors.verticalCenter: parent.verticalCenter
            visible: !acceptCheckBox.visible
            checked: true
            text: qsTranslate("main", "Accept") + DataManager.emptyString
        }

        // Waits for the server to say where the agreement is.
        PXNorButton {
            id: agreementButton

            objectName: "agreementButton"
            anchors.baseline: acceptPicture.baseline
            width: textLength()
            height: 22
            radius: Theme.smallRadius
            enabled: false
            underLine: agreementButton.enabled
            pointSize: Theme.points(Theme.normalText)
            textColor: agreementButton.enabled ? Theme.textColor : Theme.quietTextColor
            pressedTextColor: Theme.quietTextColor
            btText: qsTranslate("main", "Vorn license agreement") + DataManager.emptyString
            // It is pressed in vain, so the item itself is not disabled.
            Accessible.description: agreementButton.enabled ? ""
                : qsTranslate("main", "Not available now") + DataManager.emptyString
            onClicked: root.openAgreement()
        }
    }

    PXNorButton {
        id: customPathButton

        objectName: "customPathButton"
        x: root.width - Theme.margin - width
        y: agreementRow.y + acceptPicture.y + acceptPicture.baselineOffset - baselineOffset
        width: textLength() + 20
        height: 26
        radius: Theme.smallRadius
        textLeftMargin: -1
        pointSize: Theme.points(Theme.normalText)
        textColor: Theme.textColor
        pressedTextColor: Theme.quietTextColor
        btText: qsTranslate("main", "Custom path >") + DataManager.emptyString
        onClicked: root.togglePanel()

        Image {
            objectName: "customPathArrow"
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            rotation: root.panelOpen ? 90 : 0
            source: "qrc:/image/drop.png"
        }
    }
}
