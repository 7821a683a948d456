import QtQuick 2.9
import VORN.DataManager 1.0
import "../VORN"
import "../parts"

Rectangle {
    id: root

    property alias typedPath: pathField.text
    property string defaultPath
    property string hint // what an installation into the path would meet
    readonly property bool createShortcut: shortcutCheckBox.checked
    readonly property bool startUpAutomatically: autoStartCheckBox.checked

    signal browse()

    radius: Theme.pageRadius
    color: Theme.panelColor

    Image {
        source: "qrc:/image/chooseDirPageBg.png"
    }

    PXLineEditNormal {
        id: pathField

        objectName: "pathField"
        x: 28
        y: 8
        width: 584 - 10 - browseButton.width
        height: Theme.fieldHeight
        textLeftPadding: 12
        pointSize: Theme.points(Theme.smallText)
        color: Theme.fieldTextColor
        enterImage: "qrc:/image/lineEditBg.png"
        exitImge: "qrc:/image/lineEditBg.png"
        placeholderText: root.defaultPath
        accessibleName: qsTranslate("main", "Installation directory") + DataManager.emptyString
        accessibleDescription: root.hint
    }

    FocusRing {
        anchors.fill: pathField
        anchors.margins: -3
        focusItem: pathField
        radius: 7
        border.color: Theme.outlineColor
    }

    PXNorButton {
        id: browseButton

        objectName: "browseButton"
        x: 612 - width
        y: pathField.y
        width: textLength() > 88 ? textLength() + 40 : 88
        height: Theme.fieldHeight
        radius: 5
        padOrStretch: false
        hoverOpacity: 0.85
        pointSize: Theme.points(Theme.normalText)
        textColor: Theme.textColor
        btText: qsTranslate("main", "Browse") + DataManager.emptyString
        btIcon: "qrc:/image/rightBg.png"
        onClicked: root.browse()
    }

    // The field tells it to screen readers.
    SceneText {
        objectName: "hintText"
        x: pathField.x
        y: 47
        width: 584
        baseSize: Theme.hintText
        textFormat: Text.PlainText
        elide: Text.ElideMiddle
        maximumLineCount: 1
        text: root.hint
        Accessible.ignored: true
    }

    Row {
        x: 28
        y: 70
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
