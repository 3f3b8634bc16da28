// The rows to edit: selected, renamed, dragged to another place.
import QtQuick
import QtQuick.Window
import QtQuick.Controls.Basic
import Tessara

EntryView {
    id: root

    property var renaming: null // the record whose name is typed
    property int dragSource: -1
    property var dragRecord: null
    property double dragTranslation: 0
    signal groupRequested()
    signal chosen() // by the operator

    readonly property int rowPitch: 42
    readonly property bool isDragging: dragSource >= 0
    readonly property int dropSlot: isDragging ? workspace.runlist.dropSlotAt(dragSource, dragTranslation) : -1

    boundsBehavior: Flickable.StopAtBounds
    reuseItems: false
    Accessible.name: qsTr("Layers")

    Keys.onSpacePressed: if (hasKeys && keyRow) choose(keyRow.record, false)
    Keys.onMenuPressed: if (keyRow) openMenu(keyRow, Qt.point(80, rowPitch / 2))
    Keys.onDeletePressed: if (hasKeys) workspace.pressDelete()

    function choose(record, toggles) {
        if (renaming === record)
            return // the third click of a quick hand
        if (renaming) {
            Window.activeFocusItem.focus = false // which ends the rename, and no more
            return
        }
        if (toggles)
            record.toggleSelected()
        else
            record.select()
        chosen()
    }
    function openMenu(row, at) {
        if (!row.record.isSelected)
            row.record.select()
        menu.openFor(row.record, root, row.mapToItem(root, at))
    }
    function startDrag(index, record) {
        renaming = null
        dragTranslation = 0
        dragRecord = record
        dragSource = index
    }
    function drop() {
        const source = dragSource
        const slot = dropSlot
        dragSource = -1
        if (slot >= 0)
            workspace.runlist.moveEntries(source, slot)
    }

    Connections { // a slot among other rows is another place
        target: root.workspace.runlist
        function onEntriesChanged() { root.dragSource = -1 }
    }
    Connections {
        target: root.renaming
        function onGone() { root.renaming = null }
    }

    WheelHandler {
        onWheel: (event) => {
            const end = Math.max(0, root.contentHeight - root.height)
            root.contentY = Math.max(0, Math.min(end, root.contentY - event.angleDelta.y / 120 * root.rowPitch))
        }
    }

    delegate: EntryRow {
        id: row

        required property int index

        width: ListView.view.width
        isLive: root.workspace.isLive
        isRenaming: root.renaming === record
        hasKeyboard: root.hasKeys && root.keyRow === row
        opacity: root.dragSource === index ? 0.35 : 1
        onClicked: (toggles) => root.choose(record, toggles)
        onMenuRequested: (at) => root.openMenu(row, at)
        onRenameRequested: if (!record.isGroup) root.renaming = record
        onRenamed: (name) => { if (root.renaming === record) record.rename(name) }
        onRenameEnded: if (root.renaming === record) root.renaming = null
        onDragStarted: root.startDrag(index, record)
        onDragged: (translation) => root.dragTranslation = translation
        onDragEnded: root.drop()
    }

    Item { // over the rows, and not in the way of the pointer
        objectName: "dragLayer"
        parent: root
        anchors.fill: parent
        visible: root.isDragging
        z: 2

        Rectangle {
            objectName: "dropLine"
            visible: root.dropSlot >= 0
            x: 46
            y: root.dropSlot * root.rowPitch - root.contentY - 2
            width: parent.width - x
            height: 3
            color: TS.accent
            Rectangle { x: -4; y: -3; width: 9; height: 9; radius: 5; color: TS.accent }
        }
        Loader {
            active: root.isDragging
            x: 6
            y: root.dragSource * root.rowPitch - root.contentY + root.dragTranslation
            width: parent.width
            sourceComponent: Item {
                implicitHeight: root.rowPitch
                Rectangle { // its shadow
                    anchors { fill: parent; margins: -4 }
                    radius: TS.radiusCard
                    color: Qt.rgba(0, 0, 0, 0.5)
                }
                EntryRow {
                    anchors.fill: parent
                    enabled: false
                    isLifted: true
                    record: root.dragRecord
                    isLive: root.workspace.isLive
                }
            }
        }
    }
    EntryMenu {
        id: menu
        workspace: root.workspace
        place: "edit"
        onGroupRequested: root.groupRequested()
    }
    TSEmptyState {
        anchors.centerIn: parent
        visible: root.count === 0
        iconName: "layers"
        text: qsTr("No Layers")
        hint: qsTr("Add layers using the toolbar above")
    }
}
