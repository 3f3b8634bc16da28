// Keeps a layer from being taken or edited by mistake.
import QtQuick
import QtQuick.Controls.Basic
import Tessara

AbstractButton {
    id: root

    required property var record
    required property string help
    property bool isBacked: false // stands out where there is room

    objectName: "lockButton"
    implicitWidth: 34
    implicitHeight: 34
    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    Accessible.name: help
    onClicked: record.toggleLocked()

    background: Rectangle {
        radius: TS.radius
        color: root.hovered || root.isBacked ? TS.bg3 : "transparent"
        TSFocusRing { control: root }
    }
    contentItem: Item {
        TSIcon {
            anchors.centerIn: parent
            name: root.record.isLocked ? "lock" : "lock-open"
            size: 15
            color: root.record.isLocked ? TS.label : TS.labelSub
        }
    }
    TSTooltip { visible: root.hovered; text: root.help }
}
