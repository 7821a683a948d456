import QtQuick 2.9
import VORN.DataManager 1.0
import "../VORN"

Rectangle {
    id: root

    readonly property real dpiScale: DataManager.getDpiScale()
    property alias path: pathField.text
    readonly property string defaultPath: DataManager.getSystemType() === "linux"
        ? qsTranslate("main", "/opt/VornVPN") : qsTranslate("main", "C:\\Program Files\\VornVPN")
    readonly property bool createShortcut: shortcutCheckBox.checked
    readonly property bool startUpAutomatically: autoStartCheckBox.checked

    signal browse()

    radius: 12
    color: "#308742"

    // Once: what the user types survives a change of the language.
    Component.onCompleted: path = defaultPath

    Image {
        source: "qrc:/image/chooseDirPageBg.png"
    }

    PXLineEditNormal {
        id: pathField

        objectName: "pathField"
        x: 28
        y: 16
        width: 584 - 10 - browseButton.width
        height: 34
        textLeftPadding: 12
        pointSize: 10 / root.dpiScale
        color: "#333333"
        enterImage: "qrc:/image/lineEditBg.png"
        exitImge: "qrc:/image/lineEditBg.png"
        placeholderText: root.defaultPath + DataManager.emptyString
        accessibleName: qsTranslate("main", "Installation directory") + DataManager.emptyString
    }

    Rectangle {
        anchors.fill: pathField
        anchors.margins: -3
        visible: pathField.activeFocus
        radius: 7
        color: "transparent"
        border.width: 2
        border.color: "#a5dfb0"
    }

    PXNorButton {
        id: browseButton

        objectName: "browseButton"
        x: 612 - width
        y: 16
        width: textLength() > 88 ? textLength() + 40 : 88
        height: 34
        radius: 5
        padOrStretch: false
        hoverOpacity: 0.85
        pointSize: 11 / root.dpiScale
        textColor: "white"
        btText: qsTranslate("main", "Browse") + DataManager.emptyString
        btIcon: "qrc:/image/rightBg.png"
        onClicked: root.browse()
    }

    Row {
        x: 28
        y: 64
        spacing: 36

        SceneCheckBox {
            id: autoStartCheckBox

            objectName: "autoStartCheckBox"
            text: qsTranslate("main", "Start Up Automatically") + DataManager.emptyString
        }

        SceneCheckBox {
            id: shortcutCheckBox

            objectName: "shortcutCheckBox"
            text: qsTranslate("main", "Create Shortcut") + DataManager.emptyString
        }
    }
}
