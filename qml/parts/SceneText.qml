import QtQuick 2.9

Text {
    property real baseSize: Theme.smallText

    color: Theme.textColor
    font.family: Theme.fontFamily
    font.pointSize: Theme.points(baseSize)
    Accessible.role: Accessible.StaticText
    // Changes of a name are told even where the text is ignored.
    Accessible.name: Accessible.ignored ? "" : text
}
