// The rows to run a show from, by pointer or by keys.
import QtQuick
import QtQuick.Controls.Basic
import Tessara

ListView {
    id: root

    required property Workspace workspace
    required property string place // runlist, window
    property bool isCueMode: false
    property bool isLocked: false // no row takes a click
    property string emptyHint: ""

    clip: true
    activeFocusOnTab: true
    interactive: false // a press is a take, and never scrolls
    spacing: 6
    topMargin: 12
    bottomMargin: 12
    model: workspace.entries
    currentIndex: -1
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Runlist")
    ScrollBar.vertical: ScrollBar {}

    Keys.onUpPressed: decrementCurrentIndex()
    Keys.onDownPressed: incrementCurrentIndex()
    Keys.onSpacePressed: (event) => clickCurrent(event)
    Keys.onReturnPressed: (event) => clickCurrent(event)
    Keys.onEnterPressed: (event) => clickCurrent(event)
    Keys.onMenuPressed: {
        if (currentItem)
            menu.openFor(currentItem.record, currentItem, Qt.point(110, currentItem.height / 2))
    }

    function clickCurrent(event) {
        if (currentItem && !event.isAutoRepeat)
            currentItem.click()
    }

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
        hasKeyboard: root.activeFocus && ListView.isCurrentItem
        opacity: root.isLocked ? 0.65 : 1
        onMenuRequested: (at) => menu.openFor(record, row, at)
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
