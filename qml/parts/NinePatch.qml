import QtQuick 2.9

// A picture that keeps its round ends in whatever width it is shown.
BorderImage {
    readonly property int endLength: Math.floor(implicitHeight / 2)
    readonly property int rimLength: height === implicitHeight ? 0 : Math.floor(implicitHeight / 4)

    border.left: endLength
    border.right: endLength
    border.top: rimLength
    border.bottom: rimLength
}
