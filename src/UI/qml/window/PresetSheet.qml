// The presets: choosing one adds its layers.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tessara

TSSheet {
    id: root

    required property var presets
    required property bool isLive

    readonly property bool isMine: presets.tab === "mine"
    readonly property int tabCount: isMine ? presets.mineCount : presets.systemCount

    objectName: "presetSheet"
    isOnAir: isLive
    width: Math.min(980, room.width - 32)
    height: Math.min(640, room.height - 32)
    onAboutToShow: { presets.search = ""; presets.refresh(); grid.currentIndex = -1 }
    onOpened: searchField.forceActiveFocus()

    function apply(row) {
        presets.apply(row)
        close()
    }

    contentItem: ColumnLayout {
        spacing: 0

        RowLayout {
            Layout.fillWidth: true
            Layout.preferredHeight: 56
            Layout.leftMargin: 16
            Layout.rightMargin: 16
            spacing: 12
            TSSegmented {
                objectName: "presetTabs"
                Layout.fillWidth: false
                Layout.preferredWidth: 260 // the count changes sides, and nothing else moves
                label: qsTr("Presets")
                options: [
                    { value: "mine", label: qsTr("My Presets"), icon: "folder",
                      badge: root.isMine ? String(root.presets.mineCount) : undefined },
                    { value: "system", label: qsTr("System"), icon: "star",
                      badge: root.isMine ? undefined : String(root.presets.systemCount) }]
                value: root.presets.tab
                onChosen: (value) => root.presets.tab = value
            }
            TSTextField {
                id: searchField
                objectName: "presetSearch"
                Layout.preferredWidth: 240
                leftPadding: 32
                isLive: true
                value: root.presets.search
                placeholderText: qsTr("Search")
                Accessible.name: qsTr("Search")
                onEdited: (text) => root.presets.search = text
                Keys.onEscapePressed: root.close()
                TSIcon {
                    x: 10
                    anchors.verticalCenter: parent.verticalCenter
                    name: "search"
                    size: 15
                    color: TS.labelFade
                }
            }
            Item { Layout.fillWidth: true }
            TSPillBadge { visible: root.isLive; text: qsTr("ON AIR"); look: "air" }
        }
        TSDivider { isZone: true }
        GridView {
            id: grid

            readonly property int space: 16
            readonly property int columns: Math.max(2, Math.floor((width - space) / (280 + space)))

            objectName: "presetGrid"
            Layout.fillWidth: true
            Layout.fillHeight: true
            leftMargin: space
            topMargin: space
            clip: true
            cellWidth: Math.floor((width - space) / columns)
            cellHeight: Math.round((cellWidth - space) * 9 / 16) + 86 + space
            boundsBehavior: Flickable.StopAtBounds
            currentIndex: -1
            highlightFollowsCurrentItem: false // a click moves nothing from under the pointer
            model: root.presets
            ScrollBar.vertical: ScrollBar {}
            delegate: Item {
                id: cell

                required property int index
                required property string presetName
                required property string thumbnail

                width: grid.cellWidth
                height: grid.cellHeight
                PresetCard {
                    width: parent.width - grid.space
                    height: parent.height - grid.space
                    presetName: cell.presetName
                    thumbnail: cell.thumbnail
                    isSelected: cell.GridView.isCurrentItem
                    isLive: root.isLive
                    onSelected: grid.currentIndex = cell.index
                    onApproached: root.presets.prepare(cell.index)
                    onReached: grid.positionViewAtIndex(cell.index, GridView.Contain)
                    onApplied: root.apply(cell.index)
                }
            }
            TSEmptyState {
                objectName: "noPresets"
                visible: grid.count === 0
                anchors.centerIn: parent
                iconName: root.tabCount > 0 ? "search" : root.isMine ? "gallery-vertical-end" : "star"
                text: root.tabCount > 0 ? qsTr("No preset found") : root.isMine ? qsTr("No Presets Yet") : ""
                hint: root.tabCount > 0 ? "" : root.isMine
                      ? qsTr("Create your own presets and export them\nto share or save as system presets.")
                      : qsTr("System presets come bundled with the app.\nMore will be added in future updates.")
            }
        }
        TSDivider { isZone: true }
        RowLayout {
            Layout.fillWidth: true
            Layout.preferredHeight: 64
            Layout.leftMargin: 20
            Layout.rightMargin: 20
            TSButton { objectName: "presetClose"; text: qsTr("Close"); onClicked: root.close() }
            Item { Layout.fillWidth: true }
        }
    }
}
