// Shows or hides its row at the moment of the press, and is red while it is shown.
import QtQuick
import QtQuick.Controls.Basic
import Tessara

AbstractButton {
    id: root

    required property var record
    required property bool isLive

    readonly property bool isSolid: record.isOnAir && isLive
    readonly property bool isMoving: record.visibility > 0 && record.visibility < 1

    objectName: "airCell"
    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    Accessible.name: (record.isOnAir ? qsTr("On air, %1, Hide") : qsTr("Off air, %1, Show")).arg(TS.shortened(record.name))
    onPressed: record.toggleHidden()

    background: Rectangle {
        color: root.isMoving && root.isSolid ? Qt.alpha(TS.onAir, 0.26)
             : root.isSolid ? TS.onAir
             : root.hovered ? TS.bg2 : TS.bg1
        border.width: root.record.isOnAir && !root.isLive ? 2 : root.hovered && root.isLive ? 2 : 0
        border.color: TS.onAir

        Rectangle { // how far a running take has come
            visible: root.isMoving && root.isSolid
            width: parent.width * root.record.visibility
            height: parent.height
            color: TS.onAir
        }
        TSFocusRing { control: root }
    }
    contentItem: Item {
        TSIcon {
            anchors.centerIn: parent
            name: root.record.isOnAir ? "eye" : "eye-off"
            color: root.isSolid && !root.isMoving ? TS.ink : root.record.isOnAir ? TS.label : TS.labelSub
        }
    }
}
