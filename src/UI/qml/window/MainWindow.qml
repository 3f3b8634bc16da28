// The application's window.
import QtQuick
import QtQuick.Layouts
import Tessara

TSWindow {
    id: root

    required property Workspace workspace

    width: 1280
    height: 800
    minimumWidth: 1120
    minimumHeight: 680
    title: qsTr("Tessara")

    readonly property bool isWide: width >= 1440

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        TitleBar {
            Layout.fillWidth: true
            undoStack: root.workspace.undoStack
            onRunlistRequested: root.workspace.showRunlist()
        }
        TSDivider { isZone: true }
        RowLayout {
            Layout.fillWidth: true
            Layout.fillHeight: true
            spacing: 0

            LayersPanel {
                id: layersPanel
                objectName: "layersPanel"
                Layout.preferredWidth: root.isWide ? 296 : 280
                Layout.fillHeight: true
                workspace: root.workspace
                onGroupRequested: groupSheet.open()
                onLayerChosen: { root.workspace.noteChoice(); canvasArea.takeKeys() }
                onPresetsRequested: presetSheet.open()
            }
            Rectangle { Layout.fillHeight: true; implicitWidth: 1; color: TS.border }
            CanvasArea {
                id: canvasArea
                Layout.fillWidth: true
                Layout.fillHeight: true
                workspace: root.workspace
                margin: root.isWide ? 32 : 24
            }
            Rectangle { Layout.fillHeight: true; implicitWidth: 1; color: TS.border }
            Inspector {
                Layout.preferredWidth: root.isWide ? 320 : 304
                Layout.fillHeight: true
                workspace: root.workspace
            }
        }
        TSDivider { isZone: true }
        StatusBar {
            id: statusBar

            Layout.fillWidth: true
            output: root.workspace.output
            onSheetRequested: outputSheet.open()
        }
    }

    GroupSheet {
        id: groupSheet

        workspace: root.workspace
        room: Qt.rect(0, 0, root.width, root.height - statusBar.height)
    }
    PresetSheet {
        id: presetSheet

        presets: root.workspace.presets
        isLive: root.workspace.isLive
        room: Qt.rect(0, 0, root.width, root.height - statusBar.height)
        onClosed: layersPanel.focusToolButton()
    }
    OutputSheet {
        id: outputSheet

        output: root.workspace.output
        room: Qt.rect(0, 0, root.width, root.height - statusBar.height)
        onClosed: statusBar.focusOutputButton()
    }
}
