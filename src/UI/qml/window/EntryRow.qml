// One layer or group: its air cell at the left, apart from all the rest.
import QtQuick
import QtQuick.Layouts
import Tessara

Item {
    id: root

    required property var record
    required property bool isLive
    property bool isRenaming: false
    property bool hasKeyboard: false
    property bool isLifted: false
    signal clicked(bool toggles)
    signal menuRequested(point at)
    signal renameRequested()
    signal renamed(string name)
    signal renameEnded()
    signal dragStarted()
    signal dragged(double translation)
    signal dragEnded()

    implicitHeight: 42
    Accessible.role: Accessible.ListItem
    Accessible.name: TS.shortened(record.name) + ", " + record.detail

    AirCell {
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
             : pointer.hovered || root.isLifted ? TS.bg2 : TS.bg1
        border { width: root.record.isSelected ? 1 : 0; color: TS.accent }

        HoverHandler { id: pointer }
        TapHandler {
            id: tap
            acceptedButtons: Qt.LeftButton
            onTapped: root.clicked(tap.point.modifiers & Qt.ControlModifier)
        }
        TapHandler {
            acceptedButtons: Qt.RightButton
            onTapped: (eventPoint) => root.menuRequested(card.mapToItem(root, eventPoint.position))
        }
        DragHandler {
            id: drag

            target: null
            acceptedButtons: Qt.LeftButton
            dragThreshold: 5
            grabPermissions: PointerHandler.TakeOverForbidden
            onActiveChanged: active ? root.dragStarted() : root.dragEnded()
            onCentroidChanged: {
                if (active)
                    root.dragged(centroid.scenePosition.y - centroid.scenePressPosition.y)
            }
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
                visible: !root.isRenaming
                Layout.fillWidth: true
                TSText {
                    objectName: "entryName"
                    width: parent.width
                    text: TS.shortened(root.record.name)
                    color: root.record.isOnAir ? TS.label : TS.labelSub
                    font { family: TS.family; pixelSize: 14
                           weight: root.record.isSelected ? Font.DemiBold : Font.Medium }
                    TapHandler { onDoubleTapped: root.renameRequested() }
                }
                TSText {
                    visible: text !== ""
                    width: parent.width
                    text: root.record.detail
                    font { family: TS.family; pixelSize: 11; weight: Font.DemiBold; letterSpacing: 0.55 }
                    color: TS.labelFade
                }
            }
            Loader {
                active: root.isRenaming
                visible: active
                Layout.fillWidth: true
                sourceComponent: TSTextField {
                    objectName: "renameField"
                    implicitHeight: 30
                    value: root.record.name
                    Accessible.name: qsTr("Name")
                    Component.onCompleted: forceActiveFocus()
                    onEdited: (text) => root.renamed(text)
                    onAccepted: root.renameEnded()
                    onActiveFocusChanged: {
                        if (activeFocus)
                            return
                        commit() // before the end of it takes the field away
                        root.renameEnded()
                    }
                }
            }
            TSPillBadge {
                visible: root.record.isLiveView
                text: "HDMI"
                look: "line"
                Accessible.name: qsTr("Not part of the DeckLink output")
            }
            TSPillBadge {
                visible: root.record.isCued
                text: root.record.stateText
                look: "cue"
            }
            LockButton {
                record: root.record
                help: root.record.isGroup
                      ? (root.record.isLocked ? qsTr("Unlock Group") : qsTr("Lock Group"))
                      : (root.record.isLocked ? qsTr("Unlock Layer") : qsTr("Lock Layer"))
            }
        }
        TSFocusFrame { visible: root.hasKeyboard }
    }
}
