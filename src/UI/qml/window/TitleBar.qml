// The head of the main window. Nothing here goes on air.
import QtQuick
import QtQuick.Layouts
import Tessara

Rectangle {
    id: root

    required property var undoStack
    signal runlistRequested()

    implicitHeight: 48
    color: TS.bg1

    RowLayout {
        anchors { fill: parent; leftMargin: TS.panelPadding; rightMargin: TS.panelPadding }
        spacing: 10

        Rectangle {
            implicitWidth: 28
            implicitHeight: 28
            radius: TS.radius
            color: TS.bg3
            TSIcon { anchors.centerIn: parent; name: "film"; color: TS.accent; size: 18 }
        }
        TSText {
            text: qsTr("Tessara")
            font { family: TS.family; pixelSize: 15; weight: Font.Bold }
        }
        TSText {
            Layout.fillWidth: true
            text: qsTr("Broadcast Graphics")
            color: TS.labelFade
        }
        TSButton {
            objectName: "runlistButton"
            iconName: "play"
            help: qsTr("Runlist")
            onClicked: root.runlistRequested()
        }
        Rectangle { implicitWidth: 1; implicitHeight: 20; color: TS.border }
        TSButton {
            objectName: "undoButton"
            iconName: "undo-2"
            help: root.undoStack.undoHelpText
            opacity: root.undoStack.canUndo ? 1 : 0.38 // and still tells why it does nothing
            onClicked: root.undoStack.undo()
        }
        TSButton {
            objectName: "redoButton"
            iconName: "redo-2"
            help: root.undoStack.redoHelpText
            opacity: root.undoStack.canRedo ? 1 : 0.38
            onClicked: root.undoStack.redo()
        }
    }
}
