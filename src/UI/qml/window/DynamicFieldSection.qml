// Whether a text is a field of its template, and under which key.
import QtQuick
import QtQuick.Layouts
import Tessara

ColumnLayout {
    id: root

    required property var editor

    readonly property bool isField: editor.fieldKind !== undefined

    spacing: 2

    TSToggle {
        objectName: "dynamicField"
        text: qsTr("Dynamic Field")
        font: TS.section
        isOn: root.isField
        onToggledTo: (isOn) => root.editor.setDynamicField(isOn)
    }
    TSFieldRow {
        visible: root.isField
        label: qsTr("Field Type")
        TSSegmented {
            objectName: "fieldType"
            label: qsTr("Field Type")
            options: [{ value: "text", label: qsTr("Text") }, { value: "score", label: qsTr("Score") },
                      { value: "timer", label: qsTr("Timer") }, { value: "image", label: qsTr("Image") }]
            value: root.editor.fieldKind
            onChosen: (value) => root.editor.fieldKind = value
        }
    }
    TSFieldRow {
        visible: root.isField
        label: qsTr("Field Key")
        TSTextField {
            id: keyField
            objectName: "fieldKeyField"
            Layout.fillWidth: true
            isLive: true
            value: root.editor.fieldKey ?? ""
            Accessible.name: qsTr("Field Key")
            // What is kept is what stands there, and the cursor stays where it is.
            onEdited: (text) => {
                const at = cursorPosition
                root.editor.setFieldKey(text)
                if (keyField.text !== value) {
                    keyField.text = value
                    cursorPosition = Math.min(at, value.length)
                }
            }
            Keys.onSpacePressed: insert(cursorPosition, "_")
        }
    }
}
