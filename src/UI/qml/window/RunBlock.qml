// How the selected layer goes on and off air.
import QtQuick
import QtQuick.Layouts
import Tessara

Rectangle {
    id: root

    required property var editor

    implicitHeight: column.implicitHeight + 24
    color: TS.bg2

    TSDivider { width: parent.width; isZone: true }
    ColumnLayout {
        id: column

        anchors { fill: parent; leftMargin: TS.panelPadding; rightMargin: TS.panelPadding; topMargin: 8 }
        spacing: 2

        TSSectionHeader { text: qsTr("Run Transition") }
        TSSegmented {
            objectName: "transitionStyle"
            label: qsTr("Run Transition")
            options: [{ value: "cut", label: qsTr("Cut") }, { value: "dissolve", label: qsTr("Dissolve") },
                      { value: "presetReveal", label: qsTr("Preset Reveal") }]
            value: root.editor.transitionStyle
            onChosen: (value) => root.editor.transitionStyle = value
        }
        TSSliderRow {
            visible: root.editor.transitionStyle !== "cut"
            label: root.editor.transitionStyle === "presetReveal" ? qsTr("Duration") : qsTr("Dissolve")
            value: root.editor.dissolveDuration ?? 0
            to: 8
            stepSize: 0.05
            decimals: 2
            unit: "s"
            onEdited: (value) => root.editor.dissolveDuration = value
        }
        TSFieldRow {
            label: qsTr("Auto Out")
            TSButton {
                iconName: "minus"
                help: qsTr("Auto Out, one second less")
                onClicked: root.editor.autoOutDuration = Math.max(0, root.editor.autoOutDuration - 1)
            }
            TSTextField {
                Layout.fillWidth: true
                horizontalAlignment: TextInput.AlignHCenter
                value: root.editor.autoOutDuration > 0 ? root.editor.autoOutDuration + " s" : qsTr("Manual")
                Accessible.name: qsTr("Auto Out")
                onEdited: (text) => {
                    const typed = parseFloat(text)
                    root.editor.autoOutDuration = isFinite(typed) ? typed : 0
                }
            }
            TSButton {
                iconName: "plus"
                help: qsTr("Auto Out, one second more")
                onClicked: root.editor.autoOutDuration = root.editor.autoOutDuration + 1
            }
        }
    }
}
