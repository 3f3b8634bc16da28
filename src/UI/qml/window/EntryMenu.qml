// What can be done with one row; the words are those of the place that it opens in. What it is about
// and what its words say is settled when it opens: the show goes on below an open menu.
import QtQuick
import Tessara

TSMenu {
    id: root

    required property Workspace workspace
    required property string place // edit, runlist, window
    property var record: null
    property bool isOnAir: false
    property bool isLocked: false
    signal groupRequested()

    readonly property bool isGroup: record?.isGroup ?? false
    readonly property bool takes: place !== "edit"
    readonly property var selection: workspace.heldSelection
    readonly property bool removesSelection: place === "edit" && !isGroup && selection.count > 1

    objectName: "entryMenu"

    function openFor(entry, list, at) {
        record = entry
        isOnAir = entry.isOnAir
        isLocked = entry.isLocked
        if (place === "edit")
            selection.hold()
        popup(list, at.x, at.y)
    }
    function takeText() {
        if (place === "window")
            return isGroup ? (isOnAir ? qsTr("Take Preset Out") : qsTr("Take Preset In"))
                           : (isOnAir ? qsTr("Take Out") : qsTr("Take In"))
        return isGroup ? (isOnAir ? qsTr("Take Group Out Now") : qsTr("Take Group In Now"))
                       : (isOnAir ? qsTr("Take Out Now") : qsTr("Take In Now"))
    }
    function lockText() {
        return isGroup ? (isLocked ? qsTr("Unlock Preset") : qsTr("Lock Preset"))
                       : (isLocked ? qsTr("Unlock Layer") : qsTr("Lock Layer"))
    }
    function deleteText() {
        if (isGroup)
            return place === "window" ? qsTr("Delete Preset") : qsTr("Delete Group")
        return removesSelection ? qsTr("Delete %1 Layers").arg(selection.count) : qsTr("Delete")
    }

    Connections {
        target: root.record
        function onGone() { root.close() }
    }
    Connections {
        target: root.selection
        enabled: root.removesSelection
        function onBroken() { root.close() }
    }
    TSMenuItem {
        visible: root.takes
        text: root.takeText()
        iconName: root.isOnAir ? "arrow-down-to-line" : "arrow-up-to-line"
        onTriggered: root.isOnAir ? root.record.takeOut() : root.record.takeIn()
    }
    TSMenuSeparator { visible: root.takes }
    TSMenuItem {
        visible: root.place === "edit" && !root.isGroup && root.selection.canGroup
        text: qsTr("Group %1 Layers").arg(root.selection.count)
        iconName: "group"
        onTriggered: root.groupRequested()
    }
    TSMenuItem {
        visible: root.place === "window"
        text: root.lockText()
        iconName: root.isLocked ? "lock-open" : "lock"
        onTriggered: root.record.setLocked(!root.isLocked)
    }
    TSMenuItem {
        visible: root.place !== "window" && !root.isGroup
        text: qsTr("Duplicate")
        iconName: "copy"
        onTriggered: root.record.duplicate()
    }
    TSMenuItem {
        visible: root.isGroup
        text: qsTr("Ungroup")
        iconName: "ungroup"
        onTriggered: root.record.ungroup()
    }
    TSMenuSeparator { visible: root.place === "edit" }
    TSMenuItem {
        text: root.deleteText()
        iconName: "trash-2"
        onTriggered: root.removesSelection ? root.selection.remove() : root.record.remove()
    }
}
