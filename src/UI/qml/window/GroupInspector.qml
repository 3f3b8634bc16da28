// A whole group is selected.
import QtQuick
import QtQuick.Layouts
import Tessara

ColumnLayout {
    id: root

    required property var editor
    required property Workspace workspace

    readonly property bool isAir: editor.isOnAir === true && workspace.isLive

    spacing: TS.gap

    TSText {
        Layout.fillWidth: true
        text: TS.shortened(root.editor.groupName ?? "")
        font: TS.title
    }
    TSText {
        text: qsTr("%1 layers").arg(root.editor.selectionCount ?? 0) + "  ·  " + qsTr("Preset Group")
        font: TS.hint
        color: TS.labelSub
    }
    TSText {
        Layout.fillWidth: true
        wrapMode: Text.Wrap
        text: qsTr("Layers in this preset group move together. To edit individually, ungroup first.")
        font: TS.hint
        color: TS.labelSub
    }
    TSButton {
        Layout.fillWidth: true
        text: qsTr("Ungroup")
        iconName: "ungroup"
        onClicked: root.editor.ungroup()
    }
    TSButton {
        Layout.topMargin: 24
        Layout.fillWidth: true
        look: root.isAir ? "airOutline" : "secondary"
        text: qsTr("Delete Group")
        iconName: "trash-2"
        onClicked: root.editor.removeGroup()
    }
}
