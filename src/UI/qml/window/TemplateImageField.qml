// A picture of a template: which one, and how it stands in its frame.
import QtQuick
import QtQuick.Layouts
import Tessara

ColumnLayout {
    id: root

    required property string fieldKey
    required property string fileName
    required property string contentMode
    signal chooseRequested()
    signal contentModeChosen(string mode)
    signal nudged(int stepsX, int stepsY)
    signal cropReset()

    spacing: 4

    component CropButton: TSButton {
        Layout.fillWidth: true
        Layout.preferredWidth: 1
        implicitHeight: 28
        objectName: "crop_" + text
        Accessible.name: qsTr("Crop Position") + ", " + text
    }

    RowLayout {
        spacing: TS.gap
        TSIcon { name: "image"; size: 20; color: TS.kindColors["image"] }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 0
            TSText { Layout.fillWidth: true; text: qsTr("Logo / Image"); font: TS.button }
            TSText {
                objectName: "field_" + root.fieldKey
                Layout.fillWidth: true
                text: root.fileName
                font: TS.hint
                color: TS.labelFade
                elide: Text.ElideMiddle
            }
        }
        TSButton {
            objectName: "field_" + root.fieldKey + "_choose"
            text: qsTr("Choose Image")
            onClicked: root.chooseRequested()
        }
    }
    TSText { text: qsTr("Logo Mode"); font: TS.hint; color: TS.labelSub }
    TSSegmented {
        objectName: "field_" + root.fieldKey + "_mode"
        label: qsTr("Logo Mode")
        options: [{ value: "fitInside", label: qsTr("Show Full Logo") },
                  { value: "fillCrop", label: qsTr("Crop to Fit") }]
        value: root.contentMode
        onChosen: (value) => root.contentModeChosen(value)
    }
    ColumnLayout {
        visible: root.contentMode === "fillCrop"
        spacing: 4
        TSText { text: qsTr("Crop Position"); font: TS.hint; color: TS.labelSub }
        GridLayout {
            columns: 3
            rowSpacing: 4
            columnSpacing: 4
            CropButton { Layout.row: 0; Layout.column: 1; text: qsTr("Up"); onClicked: root.nudged(0, -1) }
            CropButton { Layout.row: 1; Layout.column: 0; text: qsTr("Left"); onClicked: root.nudged(-1, 0) }
            CropButton { Layout.row: 1; Layout.column: 1; text: qsTr("Center"); onClicked: root.cropReset() }
            CropButton { Layout.row: 1; Layout.column: 2; text: qsTr("Right"); onClicked: root.nudged(1, 0) }
            CropButton { Layout.row: 2; Layout.column: 1; text: qsTr("Down"); onClicked: root.nudged(0, 1) }
        }
    }
}
