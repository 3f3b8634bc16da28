// The size of the selected layer, with its lock where it has one.
import QtQuick
import QtQuick.Layouts
import Tessara

ColumnLayout {
    id: root

    required property var editor

    Layout.fillWidth: true
    spacing: 2

    TSSectionHeader { text: qsTr("Size") }
    TSNumberPair {
        firstLabel: qsTr("Width")
        secondLabel: qsTr("Height")
        first: root.editor.size?.width ?? 0
        second: root.editor.size?.height ?? 0
        onFirstEdited: (value) => root.editor.setWidth(value)
        onSecondEdited: (value) => root.editor.setHeight(value)
    }
    TSToggle {
        visible: root.editor.kindName === "image" || root.editor.kindName === "shape"
        text: qsTr("Lock Aspect Ratio")
        isOn: root.editor.aspectRatioLocked ?? false
        onToggledTo: (isOn) => root.editor.setAspectRatioLocked(isOn)
    }
}
