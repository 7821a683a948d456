import QtQuick 2.9
import VORN.Operating 1.0

// What an installation into the path would meet, as far as it is known.
Item {
    id: root

    property Operating operating
    property string path
    property bool wanted: false
    property string hint
    property url folder // the nearest one that exists, once it is known

    function look() {
        if (wanted)
            operating.lookAtInstallPath(path);
    }

    onWantedChanged: look()
    onPathChanged: {
        hint = "";
        folder = "";
        pause.restart();
    }

    // Not while someone types.
    Timer {
        id: pause

        interval: 200
        onTriggered: root.look()
    }

    Connections {
        target: root.operating
        function onInstallPathLookedAt(path, hint, folder) {
            if (path !== root.path)
                return;
            root.hint = hint;
            root.folder = folder;
        }
    }
}
