// The fields of the document's templates, all in one place.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Dialogs
import QtQuick.Layouts
import Tessara

ColumnLayout {
    id: root

    required property var fields

    spacing: 2

    component ScoreStep: TSStepButton {
        required property string fieldKey
        required property int step

        objectName: "field_" + fieldKey + (step > 0 ? "_up" : "_down")
        implicitWidth: 40
        iconName: step > 0 ? "plus" : "minus"
        help: (step > 0 ? qsTr("%1, one more") : qsTr("%1, one less")).arg(TS.shortened(fieldKey))
        onClicked: root.fields.adjustScore(fieldKey, step)
    }

    AbstractButton {
        id: head

        objectName: "templateFieldsHead"
        Layout.fillWidth: true
        implicitHeight: TS.controlRow
        focusPolicy: Qt.TabFocus
        text: qsTr("Template Fields")
        Accessible.name: text
        Accessible.description: root.fields.isOpen ? qsTr("Unfolded") : qsTr("Folded")
        onClicked: root.fields.isOpen = !root.fields.isOpen
        Keys.onReturnPressed: clicked()

        background: Item { TSFocusRing { control: head } }
        contentItem: RowLayout {
            spacing: TS.gap
            TSIcon {
                name: root.fields.isOpen ? "chevron-down" : "chevron-right"
                size: 14
                color: TS.labelSub
            }
            TSText { Layout.fillWidth: true; text: head.text; font: TS.section; color: TS.labelSub }
            TSPillBadge { objectName: "templateFieldCount"; text: root.fields.count }
        }
    }
    Repeater {
        model: root.fields
        ColumnLayout {
            id: field

            required property string fieldKey
            required property string fieldKind
            required property string fieldValue
            required property string contentMode

            visible: root.fields.isOpen
            Layout.fillWidth: true
            Layout.bottomMargin: 6
            spacing: 2

            TSText {
                Layout.fillWidth: true
                Layout.preferredHeight: 20
                text: TS.shortened(field.fieldKey)
                font: TS.hint
                color: TS.labelSub
            }
            Loader {
                Layout.fillWidth: true
                sourceComponent: field.fieldKind === "text" ? textRow
                               : field.fieldKind === "score" ? scoreRow
                               : field.fieldKind === "timer" ? timerRow : imageRow
            }

            Component {
                id: textRow
                TSTextArea {
                    objectName: "field_" + field.fieldKey
                    leastHeight: 32
                    label: field.fieldKey
                    value: field.fieldValue
                    onEdited: (text) => root.fields.setText(field.fieldKey, text)
                }
            }
            Component {
                id: scoreRow
                RowLayout {
                    spacing: TS.gap
                    TSText { Layout.fillWidth: true; text: qsTr("Score"); color: TS.label; font: TS.button }
                    TSText {
                        objectName: "field_" + field.fieldKey
                        Layout.rightMargin: TS.gap
                        text: TS.shortened(field.fieldValue)
                        font { family: TS.family; pixelSize: 24; weight: Font.DemiBold }
                    }
                    ScoreStep { fieldKey: field.fieldKey; step: -1 }
                    ScoreStep { fieldKey: field.fieldKey; step: 1 }
                }
            }
            Component {
                id: timerRow
                RowLayout {
                    TSText {
                        Layout.fillWidth: true
                        Layout.preferredHeight: 32
                        text: qsTr("Timer")
                        font: TS.button
                    }
                    TSText { objectName: "field_" + field.fieldKey; text: TS.shortened(field.fieldValue); color: TS.labelSub }
                }
            }
            Component {
                id: imageRow
                TemplateImageField {
                    fieldKey: field.fieldKey
                    fileName: field.fieldValue
                    contentMode: field.contentMode
                    onChooseRequested: { pictureDialog.fieldKey = field.fieldKey; pictureDialog.open() }
                    onContentModeChosen: (mode) => root.fields.setContentMode(field.fieldKey, mode)
                    onNudged: (stepsX, stepsY) => root.fields.nudgeCrop(field.fieldKey, stepsX, stepsY)
                    onCropReset: root.fields.resetCrop(field.fieldKey)
                }
            }
        }
    }
    FileDialog {
        id: pictureDialog

        property string fieldKey: ""

        objectName: "fieldPictureDialog"
        title: qsTr("Choose Image")
        options: FileDialog.DontUseNativeDialog
        nameFilters: [qsTr("Pictures") + " (*.png *.jpg *.jpeg *.webp *.svg *.gif *.tif *.tiff *.bmp)"]
        onAccepted: root.fields.chooseImage(fieldKey, selectedFile)
    }
    Connections {
        target: root.fields
        function onFieldRemoved(key) {
            if (key === pictureDialog.fieldKey)
                pictureDialog.close()
        }
    }
}
