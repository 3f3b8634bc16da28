// One line of the show: the card is the take.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tessara

Item {
    id: root

    required property var record
    required property bool isLive
    required property bool isCueMode
    required property bool isRowLocked
    property bool showsLock: false
    property bool hasKeyboard: false
    signal menuRequested(point at)

    readonly property string help: {
        record.stateText // what a click would do changes with it
        return record.helpText(isCueMode, isRowLocked)
    }
    readonly property color markColor: isCueMode ? TS.cued : TS.onAir

    objectName: "runlistRow"
    implicitHeight: 54
    Accessible.role: Accessible.ListItem
    Accessible.name: [record.stateText, TS.shortened(record.name), record.detail, help].filter(part => part !== "").join(", ")
    Accessible.onPressAction: click()

    function click() { record.click(isCueMode, isRowLocked) }

    Rectangle {
        id: card

        objectName: "runlistCard"
        width: parent.width - (root.showsLock ? 44 : 0)
        height: parent.height
        radius: TS.radiusCard
        color: pointer.hovered && !root.isRowLocked ? TS.bg3 : TS.bg2

        HoverHandler { id: pointer }
        TapHandler { // a take is at the moment of the press
            acceptedButtons: Qt.LeftButton
            gesturePolicy: TapHandler.ReleaseWithinBounds
            onPressedChanged: if (pressed) root.click()
        }
        TapHandler {
            acceptedButtons: Qt.RightButton
            onTapped: (eventPoint) => root.menuRequested(eventPoint.position)
        }
        Rectangle { // the tally
            width: 14
            height: parent.height
            radius: TS.radiusCard
            color: root.record.isOnAir && root.isLive ? TS.onAir : TS.bg0
        }
        RunlistStateBlock {
            x: 10
            width: 88
            height: parent.height
            record: root.record
            isLive: root.isLive
        }
        Column {
            anchors {
                left: parent.left; leftMargin: 110
                right: parent.right; rightMargin: 10
                verticalCenter: parent.verticalCenter
            }
            TSText {
                width: parent.width
                text: TS.shortened(root.record.name)
                color: root.record.isOnAir || root.record.isCued ? TS.label : TS.labelSub
                font { family: TS.family; pixelSize: 15; weight: Font.DemiBold }
            }
            Row {
                spacing: 6
                TSIcon {
                    anchors.verticalCenter: parent.verticalCenter
                    name: root.record.icon
                    size: 14
                    color: TS.kindColors[root.record.kind] ?? TS.label
                }
                TSText {
                    text: [root.record.detail, root.record.autoOutText].filter(part => part !== "").join("  ·  ")
                    font: TS.hint
                    color: TS.labelSub
                }
            }
        }
        Rectangle {
            anchors { fill: parent; margins: -2 }
            visible: root.hasKeyboard || (pointer.hovered && !root.isRowLocked)
            radius: TS.radiusCard + 2
            color: "transparent"
            border { width: 2; color: root.hasKeyboard ? TS.accent : root.markColor }
        }
        TSTooltip {
            visible: pointer.hovered
            text: root.help
            x: 110
            y: card.height - 6
        }
    }
    LockButton {
        visible: root.showsLock
        anchors { right: parent.right; verticalCenter: parent.verticalCenter }
        record: root.record
        isBacked: root.record.isLocked
        help: root.record.isGroup
              ? (root.record.isLocked ? qsTr("Unlock Preset") : qsTr("Lock Preset"))
              : (root.record.isLocked ? qsTr("Unlock this layer") : qsTr("Lock this layer"))
    }
}
