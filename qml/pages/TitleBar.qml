import QtQuick 2.9
import VORN.DataManager 1.0
import "../VORN"
import "../parts"

Item {
    id: root

    property bool closable: true

    signal minimize()
    signal close()

    height: 56

    Image {
        id: badge

        x: 20
        y: 14
        source: "qrc:/image/logoNew.png"
    }

    SceneText {
        anchors.left: badge.right
        anchors.leftMargin: 8
        anchors.verticalCenter: badge.verticalCenter
        baseSize: Theme.titleText
        text: qsTranslate("main", "VornVPN") + DataManager.emptyString
    }

    PXNorButton {
        objectName: "miniButton"
        x: closeButton.x - width - 12
        anchors.verticalCenter: badge.verticalCenter
        width: 22
        height: 17
        radius: Theme.smallRadius
        pressedColor: Theme.hoverColor
        btIcon: "qrc:/image/mini.png"
        Accessible.name: qsTranslate("main", "Minimize") + DataManager.emptyString
        onClicked: root.minimize()
    }

    PXNorButton {
        id: closeButton

        objectName: "closeButton"
        x: root.width - width - 20
        anchors.verticalCenter: badge.verticalCenter
        width: 18
        height: 16
        radius: Theme.smallRadius
        enabled: root.closable
        opacity: root.closable ? 1 : 0.5
        pressedColor: Theme.hoverColor
        btIcon: "qrc:/image/main_close.png"
        Accessible.name: qsTranslate("main", "Close") + DataManager.emptyString
        Accessible.description: root.closable ? ""
            : qsTranslate("main", "Not available now") + DataManager.emptyString
        onClicked: root.close()
    }
}
