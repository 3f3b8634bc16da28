// A sheet over the window; what lies below `room` stays lit.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as T

Popup {
    id: root

    required property rect room
    property bool isOnAir: false // what it changes is seen at once

    x: room.x + (room.width - width) / 2
    y: Math.max(16, room.y + (room.height - height) / 2)
    padding: 0
    modal: true
    focus: true
    closePolicy: Popup.CloseOnEscape

    T.Overlay.modal: Item {
        Rectangle { width: parent.width; height: root.room.height; color: TS.scrim }
    }
    background: Rectangle {
        radius: TS.radiusSheet
        color: TS.bg1
        border { width: 1; color: TS.border }
        Rectangle {
            visible: root.isOnAir
            x: 1
            width: parent.width - 2
            height: 3
            radius: 2
            color: TS.onAir
        }
    }
}
