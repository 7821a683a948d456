import QtQuick 2.9
import QtQuick.Controls 1.3
import QtQuick.Controls.Styles 1.2

CheckBox {
    id: root

    function toggleByKey(event) {
        event.accepted = true;
        ring.byKeyboard = true;
        if (!event.isAutoRepeat)
            checked = !checked;
    }

    checked: true
    Keys.onReturnPressed: toggleByKey(event)
    Keys.onEnterPressed: toggleByKey(event)

    style: CheckBoxStyle {
        panel: CheckBoxPicture {
            checked: root.checked
            pressed: root.pressed
            text: root.text
        }
    }

    MouseArea {
        anchors.fill: parent
        onPressed: {
            ring.focusByMouse();
            mouse.accepted = false;
        }
    }

    FocusRing {
        id: ring

        radius: 6
    }
}
