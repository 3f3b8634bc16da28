// The layers, front-most first: to edit them, or to run the show from them.
import QtQuick
import QtQuick.Layouts
import Tessara

Rectangle {
    id: root

    required property Workspace workspace
    property string mode: "edit" // edit, runlist
    property bool isRunlistLocked: false
    property bool requireTakeBeforeOnAir: false
    signal groupRequested()
    signal layerChosen()
    signal presetsRequested()

    readonly property bool isRunlist: mode === "runlist"

    function focusToolButton() { toolButton.forceActiveFocus() }

    color: TS.bg1

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        RowLayout {
            Layout.fillWidth: true
            Layout.preferredHeight: 44
            Layout.leftMargin: TS.panelPadding
            Layout.rightMargin: 10
            spacing: TS.gap

            TSText {
                text: root.isRunlist ? qsTr("RUNLIST") : qsTr("LAYERS")
                font: TS.heading
                color: TS.labelSub
            }
            TSPillBadge {
                objectName: "panelCount"
                text: root.isRunlist ? qsTr("%1 ON AIR").arg(root.workspace.runlist.shownLayerCount)
                                     : root.workspace.entries.count
            }
            Item { Layout.fillWidth: true }
            TSText {
                visible: !root.isRunlist && root.workspace.entries.count === 0 && !toolPicker.isOpen
                text: qsTr("Add a layer")
                font: TS.hint
                color: TS.labelSub
            }
            TSButton {
                id: toolButton
                objectName: "toolButton"
                visible: !root.isRunlist
                text: qsTr("Tool")
                look: toolPicker.isOpen ? "secondary" : "primary"
                iconName: toolPicker.isOpen ? "x" : "plus"
                Accessible.name: qsTr("Add Layer")
                onClicked: toolPicker.isOpen = !toolPicker.isOpen
            }
        }
        TSDivider { isZone: true }
        ToolPicker {
            id: toolPicker
            Layout.fillWidth: true
            workspace: root.workspace
            onIsOpenChanged: if (!isOpen) toolButton.forceActiveFocus()
            onPresetsRequested: root.presetsRequested()
        }
        TSBanner {
            objectName: "pictureError"
            visible: root.workspace.pictureError !== ""
            Layout.margins: TS.gap
            text: root.workspace.pictureError
            TapHandler { onTapped: root.workspace.dismissPictureError() }
        }
        EntryList {
            objectName: "layersList"
            visible: !root.isRunlist
            Layout.fillWidth: true
            Layout.fillHeight: true
            workspace: root.workspace
            onGroupRequested: root.groupRequested()
            onChosen: root.layerChosen()
        }
        RunlistRows {
            objectName: "panelRunlist"
            visible: root.isRunlist
            Layout.fillWidth: true
            Layout.fillHeight: true
            workspace: root.workspace
            place: "runlist"
            isCueMode: root.requireTakeBeforeOnAir
            isLocked: root.isRunlistLocked
        }
    }
}
