// Names a new group of the selected layers.
import QtQuick
import QtQuick.Layouts
import Tessara

TSSheet {
    id: root

    required property Workspace workspace

    objectName: "groupSheet"
    width: 320
    onOpened: { field.clear(); field.forceActiveFocus() }

    function confirm() {
        if (workspace.heldSelection.group(field.text))
            close()
    }

    Connections {
        target: root.workspace.heldSelection
        enabled: root.visible
        function onBroken() { root.close() }
    }

    contentItem: ColumnLayout {
        spacing: 0

        ColumnLayout {
            Layout.fillWidth: true
            Layout.margins: 20
            spacing: 4
            TSText { text: qsTr("Group Layers"); font: TS.title }
            TSText { text: qsTr("Give this group a name"); font: TS.hint; color: TS.labelSub }
            TSTextField {
                id: field
                objectName: "groupName"
                Layout.fillWidth: true
                Layout.topMargin: TS.gap
                placeholderText: qsTr("Group name")
                Accessible.name: qsTr("Group name")
                isLive: true // what is typed stays until the sheet is closed
                Keys.onReturnPressed: root.confirm()
                Keys.onEnterPressed: root.confirm()
                Keys.onEscapePressed: root.close()
            }
        }
        TSDivider { isZone: true }
        RowLayout {
            Layout.fillWidth: true
            Layout.preferredHeight: 64
            Layout.leftMargin: 20
            Layout.rightMargin: 20
            spacing: TS.gap
            Item { Layout.fillWidth: true }
            TSButton { objectName: "groupCancel"; text: qsTr("Cancel"); onClicked: root.close() }
            TSButton {
                objectName: "groupConfirm"
                text: qsTr("Group")
                look: "primary"
                enabled: field.text.trim() !== ""
                onClicked: root.confirm()
            }
        }
    }
}
