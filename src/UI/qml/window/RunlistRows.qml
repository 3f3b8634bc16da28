// The rows to run a show from, by pointer or by keys.
import QtQuick
import QtQuick.Controls.Basic
import Tessara

EntryView {
    id: root

    required property string place // runlist, window
    property bool isCueMode: false
    property bool isLocked: false // no row takes a click
    property string emptyHint: ""

    spacing: 6
    topMargin: 12
    bottomMargin: 12
    Accessible.name: qsTr("Runlist")

    Keys.onSpacePressed: clickKeyRow()
    Keys.onReturnPressed: clickKeyRow()
    Keys.onEnterPressed: clickKeyRow()
    Keys.onMenuPressed: if (keyRow) openMenu(keyRow, Qt.point(110, keyRow.height / 2))

    function clickKeyRow() {
        if (hasKeys)
            keyRow?.click()
    }
    function openMenu(row, at) { menu.openFor(row.record, root, row.mapToItem(root, at)) }

    WheelHandler {
        onWheel: (event) => {
            const end = Math.max(-root.topMargin, root.contentHeight + root.bottomMargin - root.height)
            const wanted = root.contentY - event.angleDelta.y / 2
            root.contentY = Math.max(-root.topMargin, Math.min(end, wanted))
        }
    }

    delegate: RunlistRow {
        id: row

        x: 12
        width: ListView.view.width - 24
        isLive: root.workspace.isLive
        isCueMode: root.isCueMode
        isRowLocked: root.place === "window" ? record.isLocked : root.isLocked
        showsLock: root.place === "window"
        hasKeyboard: root.hasKeys && root.keyRow === row
        opacity: root.isLocked ? 0.65 : 1
        onMenuRequested: (at) => root.openMenu(row, at)
    }

    EntryMenu {
        id: menu
        workspace: root.workspace
        place: root.place
    }
    TSEmptyState {
        anchors.centerIn: parent
        visible: root.count === 0
        iconName: "layers"
        text: qsTr("No Layers")
        hint: root.emptyHint
    }
}
