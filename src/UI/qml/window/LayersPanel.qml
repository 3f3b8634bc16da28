// The layers, front-most first, and the tools that add one.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tessara

Rectangle {
    id: root

    required property Workspace workspace

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

            TSText { text: qsTr("LAYERS"); font: TS.heading; color: TS.labelSub }
            TSPillBadge { text: root.workspace.layers.count }
            Item { Layout.fillWidth: true }
            TSText {
                visible: root.workspace.layers.count === 0 && !toolPicker.isOpen
                text: qsTr("Add a layer")
                font: TS.hint
                color: TS.labelSub
            }
            TSButton {
                id: toolButton
                objectName: "toolButton"
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
        }
        TSBanner {
            objectName: "pictureError"
            visible: root.workspace.pictureError !== ""
            Layout.margins: TS.gap
            text: root.workspace.pictureError
            TapHandler { onTapped: root.workspace.dismissPictureError() }
        }
        ListView {
            id: list

            objectName: "layersList"
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            activeFocusOnTab: true
            keyNavigationEnabled: true
            boundsBehavior: Flickable.StopAtBounds
            model: root.workspace.layers
            currentIndex: -1
            Accessible.role: Accessible.List
            Accessible.name: qsTr("Layers")
            Keys.onSpacePressed: if (currentItem) currentItem.record.select()
            delegate: LayerRow {
                width: list.width
                isLive: root.workspace.isLive
                hasKeyboard: list.activeFocus && ListView.isCurrentItem
            }
            ScrollBar.vertical: ScrollBar {}

            Column {
                anchors.centerIn: parent
                visible: list.count === 0
                spacing: TS.gap
                TSIcon {
                    anchors.horizontalCenter: parent.horizontalCenter
                    name: "layers"
                    size: 28
                    color: TS.labelFade
                }
                TSText {
                    anchors.horizontalCenter: parent.horizontalCenter
                    text: qsTr("No Layers")
                    font { family: TS.family; pixelSize: 14; weight: Font.DemiBold }
                }
                TSText {
                    anchors.horizontalCenter: parent.horizontalCenter
                    text: qsTr("Add layers using the toolbar above")
                    font: TS.hint
                    color: TS.labelSub
                }
            }
        }
    }
}
