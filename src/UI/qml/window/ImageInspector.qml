// The properties of a picture.
import QtQuick
import QtQuick.Layouts
import Tessara

ColumnLayout {
    id: root

    required property var editor

    readonly property var masks: [
        { value: "rectangle", label: qsTr("Rectangle") },
        { value: "roundedRectangle", label: qsTr("Rounded Rectangle") },
        { value: "circle", label: qsTr("Circle") }, { value: "hexagon", label: qsTr("Hexagon") },
        { value: "shield", label: qsTr("Shield") }]

    spacing: 2

    TSSectionHeader { text: qsTr("Display") }
    TSSegmented {
        label: qsTr("Display")
        options: [{ value: "fillCrop", label: qsTr("Crop to Fit") },
                  { value: "fitInside", label: qsTr("Fit Inside") }]
        value: root.editor.contentMode
        onChosen: (value) => root.editor.contentMode = value
    }
    TSText {
        Layout.fillWidth: true
        text: root.editor.contentMode === "fitInside"
              ? qsTr("The whole picture is shown inside its frame.")
              : qsTr("The picture fills its frame; what reaches beyond is cut.")
        font: TS.hint
        color: TS.labelSub
        wrapMode: Text.Wrap
    }
    TSFieldRow {
        label: qsTr("Mask")
        TSPicker {
            label: qsTr("Mask")
            subject: root.editor.id
            choices: root.masks.map((mask) => mask.label)
            choice: root.masks.findIndex((mask) => mask.value === root.editor.maskShape)
            onChosen: (row) => root.editor.maskShape = root.masks[row].value
        }
    }
    TSSliderRow {
        label: qsTr("Padding")
        value: root.editor.maskPadding ?? 0
        to: 100
        stepSize: 1
        onEdited: (value) => root.editor.maskPadding = value
    }
    TSDivider {}
    SizeSection { editor: root.editor }
    TSDivider {}
    TSSectionHeader { text: qsTr("Appearance") }
    OpacityRow { editor: root.editor }
}
