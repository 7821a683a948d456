import QtQuick 2.9
import "../parts"

Rectangle {
    id: root

    property real textSize: 16
    property int nowIndex: 0
    property real boxheight: 30
    property real popListWdith: 0
    property real popListHeight: 146
    property real popTopMargin: 0
    property real popLeftMargin: 0
    property bool m_enabled: true
    property url nomerPic
    property url hoverPic
    property url pressPic
    property alias textForShow: shownText.text
    property var modelList: []
    property color backgroundcolor: "white"
    property bool alignFlag: true
    property int positonY: -1 // 0: the list opens below the box, else above it
    property bool showSelectInBtn: true
    property url backgroundImage
    property alias dropDownImage: arrow.source
    property url sliderImage
    property alias checked: panel.open
    property bool padOrStretch: true
    property real hoverOpacity: 1

    signal itemClicked(string temp)
    signal sendData(var index, var text)

    // Of the text as it would like to be, however narrow the box is, with the 6 and 5 pixels that
    // it keeps free at its sides. Arrow and gap take 20 more.
    function textLength() {
        return wished.advanceWidth + 6 + 5;
    }

    function choose(row) {
        nowIndex = row;
        const text = modelList[nowIndex];
        textForShow = text;
        itemClicked(text);
        sendData(row, text);
        if (list.item)
            list.item.selection.clear();
        checked = false;
    }

    function focusByMouse() {
        ring.focusByMouse();
    }

    function openWithRow(row) {
        checked = true;
        list.item.markRow(row);
    }

    function handleKey(event) {
        const rows = modelList.length;
        const marked = checked ? list.item.markedRow() : -1;
        ring.byKeyboard = true;
        event.accepted = true;
        switch (event.key) {
        case Qt.Key_Space:
        case Qt.Key_Return:
        case Qt.Key_Enter:
            if (marked >= 0)
                choose(marked);
            else
                openWithRow(nowIndex);
            break;
        case Qt.Key_Down:
            openWithRow(checked ? Math.min(marked + 1, rows - 1) : nowIndex);
            break;
        case Qt.Key_Up:
            openWithRow(checked && marked >= 0 ? Math.max(marked - 1, 0) : nowIndex);
            break;
        case Qt.Key_Home:
            openWithRow(0);
            break;
        case Qt.Key_End:
            openWithRow(rows - 1);
            break;
        case Qt.Key_Escape:
            event.accepted = checked;
            checked = false;
            break;
        default:
            event.accepted = false;
        }
    }

    width: 120
    height: boxheight
    color: "transparent"
    activeFocusOnTab: true
    Accessible.role: Accessible.ComboBox
    Accessible.name: textForShow
    Accessible.onPressAction: checked = !checked
    Keys.onPressed: handleKey(event)

    Item {
        id: face

        anchors.fill: parent
        opacity: area.containsMouse ? root.hoverOpacity : 1

        NinePatch {
            anchors.centerIn: parent
            width: root.padOrStretch ? implicitWidth : parent.width
            height: root.padOrStretch ? implicitHeight : parent.height
            source: area.containsMouse ? root.pressPic : root.nomerPic
        }

        Image {
            id: arrow

            anchors.right: parent.right
            anchors.rightMargin: 5
            anchors.verticalCenter: parent.verticalCenter
            rotation: root.positonY === 0 ? 0 : 180
        }

        TextMetrics {
            id: wished

            font.family: Theme.fontFamily
            font.pointSize: root.textSize
            text: shownText.text
        }

        // Shrinks a little rather than leave the box.
        Text {
            id: shownText

            readonly property real room: width > 0 ? width / Math.max(1, wished.advanceWidth) : 1

            anchors.left: parent.left
            anchors.leftMargin: 6
            anchors.right: arrow.left
            anchors.rightMargin: 10
            anchors.verticalCenter: parent.verticalCenter
            horizontalAlignment: Text.AlignRight
            visible: root.showSelectInBtn
            color: "white"
            font.family: Theme.fontFamily
            font.pointSize: root.textSize * Math.min(1, Math.max(0.6, room))
        }
    }

    MouseArea {
        id: area

        anchors.fill: parent
        hoverEnabled: true
        cursorShape: Qt.PointingHandCursor
        onPressed: root.focusByMouse()
        onClicked: root.checked = !root.checked
    }

    FocusRing {
        id: ring

        radius: 8
    }

    Rectangle {
        id: panel

        property bool open: false

        objectName: "list"
        x: root.popLeftMargin
        y: root.positonY === 0 ? root.height + root.popTopMargin : -height - root.popTopMargin
        width: root.popListWdith
        height: root.popListHeight
        radius: 4
        color: "white"
        visible: open

        onOpenChanged: {
            if (open && list.status === Loader.Null)
                list.setSource("../parts/ComboList.qml", { "combo": root });
            if (open && list.item)
                list.item.selection.clear();
        }

        // A table is the heaviest of all controls: not before someone opens the list.
        Loader {
            id: list

            anchors.fill: parent
        }
    }
}
