// Rows that the keys walk. They hold on to the row that they came to: when it goes, they are on none.
import QtQuick
import QtQuick.Window
import QtQuick.Controls.Basic
import Tessara

ListView {
    id: root

    required property Workspace workspace
    property var keyRecord: null

    // No button or field of some row has them: what that leaves of a key is for no row. The list by
    // itself hands the focus on to the current row.
    readonly property Item keyItem: Window.activeFocusItem
    readonly property bool hasKeys: keyItem !== null && (keyItem === root || keyItem === currentItem)

    // The list by itself makes a neighbour current when a row goes.
    readonly property Item keyRow: currentItem?.record === keyRecord ? currentItem : null

    clip: true
    activeFocusOnTab: true
    interactive: false // a press takes or moves a row, and never the list
    model: workspace.entries
    currentIndex: -1
    Accessible.role: Accessible.List
    ScrollBar.vertical: ScrollBar {}

    Keys.onUpPressed: { decrementCurrentIndex(); keyRecord = currentItem?.record ?? null }
    Keys.onDownPressed: { incrementCurrentIndex(); keyRecord = currentItem?.record ?? null }

    Connections {
        target: root.keyRecord
        function onGone() { root.keyRecord = null }
    }
}
