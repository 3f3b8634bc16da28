// One action of a menu.
import QtQuick
import QtQuick.Controls.Basic

MenuItem {
    id: root

    property string iconName: ""
    property color iconColor: TS.label

    implicitHeight: 32
    height: visible ? implicitHeight : 0
    leftPadding: 10
    Accessible.name: text
    background: Rectangle {
        radius: TS.radiusSmall
        color: root.highlighted ? TS.bg4 : "transparent"
    }
    contentItem: Row {
        spacing: 10
        TSIcon {
            anchors.verticalCenter: parent.verticalCenter
            name: root.iconName
            color: root.iconColor
            size: 15
        }
        TSText { height: parent.height; text: root.text }
    }
}
