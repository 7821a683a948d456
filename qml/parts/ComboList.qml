import QtQuick 2.9
import QtQuick.Controls 1.3
import QtQuick.Controls.Styles 1.2

// The rows of a combo box's list.
TableView {
    id: table

    property Item combo

    // The row that the arrow keys have reached; -1: none.
    function markedRow() {
        let row = -1;
        selection.forEach(function(index) { row = index; });
        return row;
    }

    function markRow(row) {
        selection.clear();
        selection.select(row);
        positionViewAtRow(row, ListView.Contain);
    }

    activeFocusOnTab: false
    headerVisible: false
    frameVisible: false
    backgroundVisible: false
    alternatingRowColors: false
    horizontalScrollBarPolicy: Qt.ScrollBarAlwaysOff
    model: combo ? combo.modelList : []

    style: TableViewStyle {
        padding.top: 0
        padding.bottom: 0
        padding.left: 0
        padding.right: 0
        minimumHandleLength: 80
        handleOverlap: 0
        transientScrollBars: false
        scrollBarBackground: Item { implicitWidth: 5 }
        handle: Image {
            width: 5
            source: table.combo.sliderImage
        }
        incrementControl: Item {}
        decrementControl: Item {}
    }

    rowDelegate: Item {
        height: table.combo.boxheight - 1

        Rectangle {
            x: 2
            y: 1
            width: table.width - 4
            height: parent.height - 1
            radius: 3
            visible: styleData.selected || styleData.row === table.combo.nowIndex
            color: Theme.listRowColor
        }
    }

    itemDelegate: Item {
        Rectangle {
            x: 2
            y: 1
            width: table.width - 4
            height: parent.height - 1
            radius: 3
            visible: rowArea.containsMouse
            color: Theme.listHoverColor
        }

        Text {
            x: 10
            anchors.verticalCenter: parent.verticalCenter
            text: styleData.value
            color: rowArea.containsMouse ? Theme.listHoverTextColor
                                         : styleData.selected ? Theme.listMarkedTextColor : Theme.listTextColor
            font.family: Theme.fontFamily
            font.pointSize: table.combo.textSize
            Accessible.role: Accessible.ListItem
            Accessible.name: text
        }

        MouseArea {
            id: rowArea

            anchors.fill: parent
            hoverEnabled: true
            cursorShape: Qt.PointingHandCursor
            onClicked: table.combo.choose(styleData.row)
        }
    }

    TableViewColumn {
        width: table.width
        movable: false
        resizable: false
    }
}
