// The canvas, with the marks of the air outside the picture.
import QtQuick
import QtQuick.Layouts
import Tessara

Rectangle {
    id: root

    required property Workspace workspace
    property real margin: 24

    readonly property rect canvasRect: canvas.canvasRect

    function takeKeys() { canvas.forceActiveFocus() }

    color: TS.bg0
    clip: true

    CanvasView {
        id: canvas

        objectName: "canvas"
        width: parent.width
        height: parent.height - bar.height
        workspace: root.workspace
        margin: root.margin
        Keys.onDeletePressed: root.workspace.pressDelete()
        TapHandler { onPressedChanged: if (pressed) root.takeKeys() }
    }
    Rectangle { // the tally frame
        visible: root.workspace.isLive
        x: root.canvasRect.x - 6
        y: root.canvasRect.y - 6
        width: root.canvasRect.width + 12
        height: root.canvasRect.height + 12
        radius: 5
        color: "transparent"
        border { width: 3; color: TS.onAir }
    }
    Rectangle {
        objectName: "tallyTab"
        visible: root.workspace.isLive
        x: root.canvasRect.x - 6
        y: root.canvasRect.y - 6 - height
        width: word.implicitWidth + 20
        height: 22
        radius: TS.radiusSmall
        color: TS.onAir
        TSText { id: word; anchors.centerIn: parent; text: qsTr("ON AIR"); font: TS.cap; color: TS.ink }
    }
    Item {
        id: bar

        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        height: 48
        TSText {
            x: TS.panelPadding
            height: parent.height
            text: root.workspace.canvasSize.width + " × " + root.workspace.canvasSize.height
                  + "   " + Math.round(canvas.canvasScale * 100) + " %"
            font: TS.hint
            color: TS.labelSub
        }
    }
}
