// Tells whether the output runs, and opens its sheet in either state.
import QtQuick
import QtQuick.Controls.Basic
import Tessara

AbstractButton {
    id: root

    required property bool isRunning

    objectName: "outputButton"
    implicitWidth: 208
    implicitHeight: 34
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    text: isRunning ? qsTr("ON AIR  —  Stop") : qsTr("DeckLink Output")
    Accessible.name: isRunning ? qsTr("DeckLink Output, running") : qsTr("DeckLink Output, stopped")

    readonly property color inkColor: isRunning ? TS.ink : TS.label

    background: Rectangle {
        radius: TS.radius
        color: root.isRunning ? TS.onAir : root.hovered ? TS.bg4 : TS.bg3
        border { width: root.isRunning ? 0 : 1; color: TS.borderMid }
        TSFocusRing { control: root }
    }
    contentItem: Item {
        Row {
            anchors { left: parent.left; leftMargin: 16; verticalCenter: parent.verticalCenter }
            spacing: 10
            Rectangle {
                visible: root.isRunning
                anchors.verticalCenter: parent.verticalCenter
                width: 8
                height: 8
                radius: 4
                color: TS.ink
            }
            TSIcon {
                visible: !root.isRunning
                anchors.verticalCenter: parent.verticalCenter
                name: "play"
                color: root.inkColor
            }
            TSText {
                text: root.text
                font { family: TS.family; pixelSize: 14; weight: root.isRunning ? Font.Bold : Font.DemiBold }
                color: root.inkColor
            }
        }
        TSIcon {
            anchors { right: parent.right; rightMargin: 12; verticalCenter: parent.verticalCenter }
            name: "chevron-up"
            color: root.inkColor
        }
    }
}
