// Two numbers that belong together.
import QtQuick
import QtQuick.Layouts

RowLayout {
    id: root

    required property string firstLabel
    required property string secondLabel
    required property real first
    required property real second
    signal firstEdited(real value)
    signal secondEdited(real value)

    spacing: TS.gap
    Layout.fillWidth: true
    Layout.minimumHeight: TS.controlRow

    component NumberField: TSTextField {
        required property real number
        signal numberEdited(real value)

        Layout.fillWidth: true
        Layout.preferredWidth: 1
        alignRight: true
        value: Number(number.toFixed(2)).toString()
        Accessible.name: prefix
        onEdited: (text) => {
            const typed = Number(text.replace(/,/g, ""))
            if (isFinite(typed) && text.trim() !== "")
                numberEdited(typed)
        }
        Keys.onUpPressed: (event) => numberEdited(number + (event.modifiers & Qt.ShiftModifier ? 10 : 1))
        Keys.onDownPressed: (event) => numberEdited(number - (event.modifiers & Qt.ShiftModifier ? 10 : 1))
    }

    NumberField {
        prefix: root.firstLabel
        number: root.first
        onNumberEdited: (value) => root.firstEdited(value)
    }
    NumberField {
        prefix: root.secondLabel
        number: root.second
        onNumberEdited: (value) => root.secondEdited(value)
    }
}
