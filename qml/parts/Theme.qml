pragma Singleton
import QtQuick 2.9

// The looks of the scene that more than one file needs, and every colour and font family. The
// control set keeps the colours of its own that its users may set.
QtObject {
    // The root of a scene puts its scale here. The control set knows no settings store, so the
    // theme does not ask it.
    property real dpiScale: 1

    readonly property string fontFamily: "Microsoft YaHei UI"

    readonly property color textColor: "white"
    readonly property color quietTextColor: "#bfe5c6"
    readonly property color buttonTextColor: "#246b36"
    readonly property color fieldTextColor: "#333333"
    readonly property color pageColor: "#2a7039" // until its picture is there
    readonly property color pageFootColor: "#184f2a"
    readonly property color panelColor: "#308742"
    readonly property color boxColor: "#c0184f2a" // behind text on a page
    readonly property color outlineColor: "#a5dfb0"
    readonly property color focusColor: "white"
    readonly property color hoverColor: "#40ffffff"
    readonly property color listTextColor: "#333333"
    readonly property color listMarkedTextColor: "#4373fb"
    readonly property color listHoverTextColor: "#308236"
    readonly property color listRowColor: "#f2f9f3"
    readonly property color listHoverColor: "#d3ecd8"
    readonly property color noticeColor: "#fff3d6"
    readonly property color noticeEdgeColor: "#d9822b"
    readonly property color noticeTextColor: "#4a3200"

    // Pixels.
    readonly property int windowWidth: 640
    readonly property int windowHeight: 520
    readonly property int pageHeight: 420
    readonly property int panelHeight: 100
    readonly property int pageRadius: 12
    readonly property int margin: 27 // left and right of what stands on a page
    readonly property int buttonHeight: 48 // of the page's main button
    readonly property int smallRadius: 3
    readonly property int fieldHeight: 34
    readonly property int footTop: 374 // the bottom row, the progress bar
    readonly property int footTextTop: 346

    // Base sizes of texts, for points().
    readonly property real hintText: 9
    readonly property real smallText: 10
    readonly property real normalText: 11
    readonly property real titleText: 14
    readonly property real headlineText: 16

    // The point size that a text of this base size has on this screen.
    function points(baseSize) {
        return baseSize / dpiScale;
    }
}
