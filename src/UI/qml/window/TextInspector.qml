// The properties of a text.
import QtQuick
import QtQuick.Layouts
import Tessara

ColumnLayout {
    id: root

    required property var editor

    readonly property var weights: [
        { value: 100, label: qsTr("Thin") }, { value: 300, label: qsTr("Light") },
        { value: 400, label: qsTr("Regular") }, { value: 500, label: qsTr("Medium") },
        { value: 600, label: qsTr("Semibold") }, { value: 700, label: qsTr("Bold") },
        { value: 800, label: qsTr("Heavy") }, { value: 900, label: qsTr("Black") }]
    readonly property real weight: editor.fontWeight ?? 600

    spacing: 2

    TSSectionHeader { text: qsTr("Text Content") }
    TSTextArea {
        objectName: "textContent"
        Layout.fillWidth: true
        label: qsTr("Text Content")
        value: root.editor.text ?? ""
        onEdited: (text) => root.editor.text = text
    }
    TSText {
        objectName: "textNote"
        visible: text !== ""
        Layout.fillWidth: true
        wrapMode: Text.Wrap
        text: root.editor.textNote ?? ""
        font: TS.hint
        color: TS.labelSub
    }
    TSFieldRow {
        label: qsTr("Align")
        TSSegmented {
            label: qsTr("Align")
            options: [{ value: "leading", label: qsTr("Left"), icon: "text-align-start" },
                      { value: "center", label: qsTr("Center"), icon: "text-align-center" },
                      { value: "trailing", label: qsTr("Right"), icon: "text-align-end" }]
            value: root.editor.horizontalAlignment
            onChosen: (value) => root.editor.horizontalAlignment = value
        }
    }
    TSDivider {}
    TSSectionHeader { text: qsTr("Typography") }
    TSSliderRow {
        label: qsTr("Size")
        value: root.editor.fontSize ?? 98
        from: 8
        to: 400
        typedTo: 2400
        stepSize: 1
        unit: "px"
        onEdited: (value) => root.editor.fontSize = value
    }
    TSFieldRow {
        label: qsTr("Weight")
        TSPicker {
            objectName: "fontWeight"
            label: qsTr("Weight")
            subject: root.editor.id
            choices: root.weights.map((weight) => weight.label)
            choice: root.weights.findIndex((weight) => weight.value >= root.weight)
            onChosen: (row) => root.editor.fontWeight = root.weights[row].value
        }
    }
    TSColorRow {
        label: qsTr("Color")
        value: root.editor.color ?? "white"
        onEdited: (value) => root.editor.color = value
    }
    TSFieldRow {
        label: qsTr("Outline")
        TSToggle {
            text: qsTr("Enable Outline")
            isOn: root.editor.outlineWidth > 0
            onToggledTo: (isOn) => root.editor.outlineWidth = isOn ? 2 : 0
        }
    }
    TSColorRow {
        visible: root.editor.outlineWidth > 0
        label: qsTr("Color")
        value: root.editor.outlineColor ?? "black"
        onEdited: (value) => root.editor.outlineColor = value
    }
    TSSliderRow {
        visible: root.editor.outlineWidth > 0
        label: qsTr("Width")
        value: root.editor.outlineWidth ?? 0
        to: 16
        stepSize: 0.5
        decimals: 1
        onEdited: (value) => root.editor.outlineWidth = value
    }
    TSDivider {}
    DynamicFieldSection { editor: root.editor }
}
