import QtQuick 2.9
import VORN.DataManager 1.0

Text {
    property real baseSize: 10

    color: "white"
    font.family: "Microsoft YaHei UI"
    font.pointSize: baseSize / DataManager.getDpiScale()
}
