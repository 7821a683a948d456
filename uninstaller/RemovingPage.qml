import QtQuick 2.9
import VORN.DataManager 1.0
import "qrc:/parts"

Item {
    id: root

    property int percentage: 0
    property int shown: 0

    signal complete()

    Image {
        anchors.horizontalCenter: parent.horizontalCenter
        y: 100
        source: "qrc:/image/logo.png"
        sourceSize: Qt.size(160, 160)
    }

    SceneText {
        objectName: "removingText"
        x: Theme.margin
        y: Theme.footTextTop
        text: qsTranslate("uninstall", "Removing...") + DataManager.emptyString
    }

    SceneText {
        anchors.right: bar.right
        y: Theme.footTextTop
        text: root.shown + "%"
        // The bar tells it to screen readers when they ask.
        Accessible.ignored: true
    }

    Image {
        id: bar

        objectName: "progressBar"
        x: Theme.margin
        y: Theme.footTop
        source: "qrc:/image/progressBarBg.png"
        Accessible.role: Accessible.ProgressBar
        Accessible.name: qsTranslate("uninstall", "Progress of the removal") + DataManager.emptyString
        Accessible.description: root.shown + "%"

        NinePatch {
            width: Math.max(parent.height, parent.width * root.shown / 100)
            visible: root.shown > 0
            source: "qrc:/image/progressBarValue.png"
        }
    }

    // Files go faster than the eye can follow: the bar takes at least a second.
    Timer {
        interval: 50
        repeat: true
        running: root.visible
        onTriggered: {
            if (root.shown < 100)
                root.shown = Math.min(root.shown + 5, root.percentage);
            else
                root.complete();
        }
    }
}
