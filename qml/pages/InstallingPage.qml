import QtQuick 2.9
import QtQuick.Controls 1.3
import QtQuick.Controls.Styles 1.2
import VORN.DataManager 1.0
import "../parts"

Rectangle {
    id: root

    property alias value: progressBar.value
    property alias percentage: percentText.text
    property int stage: 0
    readonly property var stages: [
        {
            begin: 0,
            background: "qrc:/image/installPage1.png",
            illustration: "qrc:/image/installPageSy.png",
            headline: QT_TRANSLATE_NOOP("main", "One-click acceleration"),
            features: [
                QT_TRANSLATE_NOOP("main", "simple"),
                QT_TRANSLATE_NOOP("main", "easy to use"),
                QT_TRANSLATE_NOOP("main", "stable")
            ]
        },
        {
            begin: 35,
            background: "qrc:/image/installPage2.png",
            illustration: "qrc:/image/installPageSy2.png",
            headline: QT_TRANSLATE_NOOP("main", "Smart cloud acceleration"),
            features: [
                QT_TRANSLATE_NOOP("main", "Low latency"),
                QT_TRANSLATE_NOOP("main", "no freeze")
            ]
        },
        {
            begin: 70,
            background: "qrc:/image/installPage3.png",
            illustration: "qrc:/image/installPageSy3.png",
            headline: QT_TRANSLATE_NOOP("main", "Multi-platform, fully compatible"),
            features: [
                QT_TRANSLATE_NOOP("main", "New generation acceleration engine adapt to multi-platform network")
            ]
        }
    ]

    function showValue() {
        percentage = value + "%";
        const next = stages.findIndex(function(entry) { return entry.begin === value; });
        if (next >= 0)
            stage = next;
    }

    radius: Theme.pageRadius
    color: Theme.pageColor

    Repeater {
        model: root.stages

        InstallStage {
            objectName: "stage" + index
            anchors.fill: parent
            visible: root.stage === index
            wanted: root.visible
            background: modelData.background
            illustration: modelData.illustration
            headline: modelData.headline
            features: modelData.features
        }
    }

    SceneText {
        id: installingText

        objectName: "installingText"
        x: Theme.margin
        y: Theme.footTextTop
        text: qsTranslate("main", "Installing...") + DataManager.emptyString
    }

    SceneText {
        id: percentText

        objectName: "percentText"
        anchors.right: progressBar.right
        anchors.baseline: installingText.baseline
        text: "0%"
        // The bar tells its value, and screen readers ask for it as often as they like.
        Accessible.ignored: true
    }

    ProgressBar {
        id: progressBar

        objectName: "progressBar"
        x: Theme.margin
        y: Theme.footTop
        width: 586
        height: 8
        maximumValue: 100
        Accessible.name: qsTranslate("main", "Installation progress") + DataManager.emptyString

        style: ProgressBarStyle {
            background: Image {
                source: "qrc:/image/progressBarBg.png"
            }
            progress: NinePatch {
                source: "qrc:/image/progressBarValue.png"
            }
        }
    }
}
