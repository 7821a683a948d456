import QtQuick 2.9
import "../parts"

FocusScope {
    id: root

    property alias textSize: box.textSize
    property alias nowIndex: box.nowIndex
    property alias boxheight: box.boxheight
    property alias popListWdith: box.popListWdith
    property alias popListHeight: box.popListHeight
    property alias popTopMargin: box.popTopMargin
    property alias popLeftMargin: box.popLeftMargin
    property alias m_enabled: box.m_enabled
    property url nomerPic
    property url hoverPic
    property url pressPic
    property alias textForShow: badgeText.text
    property alias modelList: box.modelList
    property var modelShowList: []
    property alias backgroundcolor: box.backgroundcolor
    property alias alignFlag: box.alignFlag
    property alias positonY: box.positonY
    property bool showSelectInBtn: true
    property alias backgroundImage: box.backgroundImage
    property url dropDownImage
    property alias sliderImage: box.sliderImage
    property alias checked: box.checked
    property bool padOrStretch: true
    property real hoverOpacity: 1
    property real exitOpacity: 1

    signal click()
    signal itemClicked(string temp)
    signal sendData(var index, var text)

    function textLength() {
        return badgeText.contentWidth;
    }

    width: 120
    height: boxheight

    onActiveFocusChanged: {
        if (!activeFocus)
            checked = false;
    }

    // The list and the keyboard; its own face stays empty.
    PXComboxNew {
        id: box

        anchors.fill: parent
        focus: true
        showSelectInBtn: false
        Accessible.name: root.textForShow
        onItemClicked: {
            root.textForShow = root.modelShowList[nowIndex] || "";
            root.itemClicked(temp);
        }
        onSendData: root.sendData(index, text)
    }

    Rectangle {
        anchors.centerIn: parent
        width: 18
        height: 17
        radius: 3
        color: "#5ead67"
        border.width: 1
        border.color: "white"
        opacity: area.containsMouse ? root.hoverOpacity : root.exitOpacity

        Text {
            id: badgeText

            anchors.centerIn: parent
            visible: root.showSelectInBtn
            color: "white"
            font.family: Theme.fontFamily
            // The scene that uses this control declares dpiScale.
            font.pointSize: 7 / (typeof dpiScale === "undefined" ? 1 : dpiScale)
        }
    }

    MouseArea {
        id: area

        anchors.fill: parent
        hoverEnabled: true
        cursorShape: Qt.PointingHandCursor
        onPressed: box.focusByMouse()
        onClicked: {
            root.checked = !root.checked;
            root.click();
        }
    }
}
