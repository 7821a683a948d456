import QtQuick 2.9
import VORN.DataManager 1.0
import "qrc:/parts"

// The first of many names under a heading, and how many more there are.
Column {
    id: root

    property string heading
    property var names: []
    property int rows: 5
    // Where all but one fit, the line that tells of it takes no more room than the name itself.
    readonly property int shown: names.length > rows ? rows - 1 : names.length

    visible: names.length > 0
    spacing: 4

    SceneText {
        width: parent.width
        wrapMode: Text.Wrap
        font.bold: true
        text: root.heading
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    Repeater {
        model: root.names.slice(0, root.shown)

        SceneText {
            width: root.width
            elide: Text.ElideMiddle
            textFormat: Text.PlainText
            maximumLineCount: 1
            text: modelData
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }

    SceneText {
        visible: root.names.length > root.shown
        text: (qsTranslate("uninstall", "and %1 more") + DataManager.emptyString).arg(root.names.length - root.shown)
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
