// The opacity of the selected layer.
import Tessara

TSSliderRow {
    required property var editor

    label: qsTr("Opacity")
    value: editor.opacity ?? 1
    isPercent: true
    onEdited: (value) => editor.opacity = value
}
