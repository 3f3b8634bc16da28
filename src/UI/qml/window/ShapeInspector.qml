// The properties of a shape.
import QtQuick
import QtQuick.Layouts
import Tessara

ColumnLayout {
    id: root

    required property var editor
    required property Workspace workspace

    readonly property var kinds: workspace.shapeKinds

    spacing: 2

    TSFieldRow {
        label: qsTr("Shape Type")
        TSPicker {
            label: qsTr("Shape Type")
            subject: root.editor.id
            choices: root.kinds.map((kind) => kind.label)
            choice: root.kinds.findIndex((kind) => kind.name === root.editor.kind)
            emptyText: qsTr("Draw")
            onChosen: (row) => root.editor.kind = root.kinds[row].name
        }
    }
    TSSliderRow {
        visible: root.editor.kind === "rectangle" || root.editor.kind === "line"
        label: qsTr("Corner")
        value: root.editor.cornerRadius ?? 0
        to: 200
        stepSize: 1
        onEdited: (value) => root.editor.cornerRadius = value
    }
    TSDivider {}
    TSSectionHeader { text: qsTr("Appearance") }
    TSColorRow {
        label: qsTr("Color")
        value: root.editor.color ?? "black"
        onEdited: (value) => root.editor.color = value
    }
    OpacityRow { editor: root.editor }
    TSDivider {}
    SizeSection { editor: root.editor }
}
