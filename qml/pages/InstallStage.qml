import QtQuick 2.9
import VORN.DataManager 1.0
import "../parts"

// One of the pictures that the progress page shows in turn, with what it says about the product.
Item {
    id: root

    property string background
    property string illustration
    property string headline
    property var features: []
    // The pictures are read when the page is first shown, so that they take no memory before.
    property bool wanted: false

    Image {
        anchors.fill: parent
        source: root.wanted ? root.background : ""
    }

    Image {
        x: 140
        y: 26
        source: root.wanted ? root.illustration : ""
    }

    SceneText {
        objectName: "headline"
        anchors.horizontalCenter: parent.horizontalCenter
        y: 250
        baseSize: Theme.headlineText
        font.bold: true
        text: qsTranslate("main", root.headline) + DataManager.emptyString
    }

    Row {
        objectName: "featureRow"
        anchors.horizontalCenter: parent.horizontalCenter
        y: 292
        spacing: 12

        Repeater {
            model: root.features

            Row {
                spacing: 12

                Image {
                    anchors.verticalCenter: parent.verticalCenter
                    visible: index > 0
                    source: "qrc:/image/fgBg.png"
                }

                SceneText {
                    baseSize: Theme.normalText
                    text: qsTranslate("main", modelData) + DataManager.emptyString
                }
            }
        }
    }
}
