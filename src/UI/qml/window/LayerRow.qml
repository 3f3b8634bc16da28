// One layer: its air cell at the left, apart from all the rest.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tessara

Item {
    id: root

    required property var record
    required property int index
    required property bool isLive
    property bool hasKeyboard: false

    implicitHeight: 42
    Accessible.role: Accessible.ListItem
    Accessible.name: record.name + ", " + record.typeText

    AirCell {
        id: airCell
        width: 40
        height: parent.height - 1
        record: root.record
        isLive: root.isLive
    }
    Rectangle { // the gutter that parts what goes on air from what doesn't
        x: 40
        width: 6
        height: parent.height
        color: TS.bg0
    }
    Rectangle {
        id: card

        anchors { left: parent.left; leftMargin: 46; right: parent.right }
        height: parent.height - 1
        color: root.record.isSelected ? Qt.tint(TS.bg1, Qt.alpha(TS.accent, 0.20))
             : pointer.hovered ? TS.bg2 : "transparent"
        border { width: root.record.isSelected ? 1 : 0; color: TS.accent }

        HoverHandler { id: pointer }
        TapHandler {
            acceptedButtons: Qt.LeftButton
            onTapped: (point) => {
                if (point.modifiers & Qt.ControlModifier)
                    root.record.toggleSelected()
                else
                    root.record.select()
            }
            onDoubleTapped: nameEditor.begin()
        }
        TapHandler {
            acceptedButtons: Qt.RightButton
            onTapped: { root.record.select(); menu.popup() }
        }
        RowLayout {
            anchors { fill: parent; leftMargin: 10; rightMargin: 4 }
            spacing: 10

            TSIcon {
                name: root.record.icon
                size: 17
                color: TS.kindColors[root.record.kind] ?? TS.label
            }
            Column {
                visible: !nameEditor.visible
                Layout.fillWidth: true
                TSText {
                    width: parent.width
                    text: root.record.name
                    font { family: TS.family; pixelSize: 14
                           weight: root.record.isSelected ? Font.DemiBold : Font.Medium }
                }
                TSText {
                    width: parent.width
                    text: root.record.typeText
                    font { family: TS.family; pixelSize: 11; weight: Font.DemiBold; letterSpacing: 0.55 }
                    color: TS.labelFade
                }
            }
            TSTextField {
                id: nameEditor

                visible: false
                Layout.fillWidth: true
                implicitHeight: 30
                value: root.record.name
                Accessible.name: qsTr("Name")
                onEdited: (text) => root.record.rename(text)
                onActiveFocusChanged: if (!activeFocus) visible = false
                onAccepted: visible = false
                function begin() { visible = true; forceActiveFocus() }
            }
            TSPillBadge {
                visible: root.record.isLiveView
                text: "HDMI"
                look: "line"
            }
            LockButton { record: root.record }
        }
        TSFocusFrame { visible: root.hasKeyboard }
    }
    TSMenu {
        id: menu
        TSMenuItem { text: qsTr("Duplicate"); iconName: "copy"; onTriggered: root.record.duplicate() }
        MenuSeparator {}
        TSMenuItem { text: qsTr("Delete"); iconName: "trash-2"; onTriggered: root.record.remove() }
    }
}
