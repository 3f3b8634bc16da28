// A label and the control that it names.
import QtQuick
import QtQuick.Layouts

RowLayout {
    id: root

    required property string label
    default property alias content: holder.data

    spacing: TS.gap
    Layout.fillWidth: true
    Layout.minimumHeight: TS.controlRow

    TSText {
        Layout.preferredWidth: TS.labelWidth
        text: root.label
        color: TS.labelSub
    }
    RowLayout { id: holder; Layout.fillWidth: true; spacing: TS.gap }
}
