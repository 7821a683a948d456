import QtQuick 2.9
import VORN.DataManager 1.0
import "qrc:/parts"

// Names under headings, all of them: the wheel, the keys and a drag move a long list.
Item {
    id: root

    property var failed: []
    property var kept: []
    property bool lacksRights
    readonly property int rowsOfFailed: failed.length > 0 ? failed.length + 1 : 0
    readonly property int rowsOfKept: kept.length > 0 ? kept.length + 1 : 0
    readonly property real wantedHeight: names.contentHeight
    property alias view: names // what takes the focus

    function isHeading(row) {
        return row === 0 || row === rowsOfFailed;
    }

    function headingOfFailed() {
        const heading = qsTranslate("uninstall", "These could not be removed:");
        return lacksRights ? heading + "\n" + qsTranslate("uninstall", "Start the uninstaller again with administrator rights.")
                           : heading;
    }

    function textOf(row) {
        if (row < rowsOfFailed)
            return row === 0 ? headingOfFailed() : failed[row - 1];
        return row === rowsOfFailed ? qsTranslate("uninstall", "These files do not belong to VornVPN and were kept:")
                                    : kept[row - rowsOfFailed - 1];
    }

    ListView {
        id: names

        objectName: "names"
        anchors.fill: parent
        anchors.rightMargin: 12
        model: root.rowsOfFailed + root.rowsOfKept
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentHeight > height
        activeFocusOnTab: interactive
        Accessible.role: Accessible.List

        function scrollBy(pixels) {
            const last = originY + contentHeight - height;
            contentY = Math.max(originY, Math.min(last, contentY + pixels));
        }

        Keys.onUpPressed: scrollBy(-24)
        Keys.onDownPressed: scrollBy(24)
        Keys.onPressed: {
            event.accepted = true;
            if (event.key === Qt.Key_PageUp)
                scrollBy(-height);
            else if (event.key === Qt.Key_PageDown)
                scrollBy(height);
            else if (event.key === Qt.Key_Home)
                positionViewAtBeginning();
            else if (event.key === Qt.Key_End)
                positionViewAtEnd();
            else
                event.accepted = false;
        }

        delegate: SceneText {
            width: names.width
            topPadding: index > 0 && root.isHeading(index) ? 10 : 0
            bottomPadding: 4
            wrapMode: Text.Wrap
            textFormat: Text.PlainText
            font.bold: root.isHeading(index)
            text: root.textOf(index) + DataManager.emptyString
        }
    }

    Rectangle {
        objectName: "scrollMark"
        visible: names.interactive
        anchors.right: parent.right
        y: names.visibleArea.yPosition * parent.height
        width: 5
        height: Math.max(20, names.visibleArea.heightRatio * parent.height)
        radius: 2
        color: Theme.outlineColor
    }
}
