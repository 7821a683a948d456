import QtQuick 2.9

Rectangle {
    width: 640
    height: 520
    color: "transparent"
}
