// The head of a group of controls.
import QtQuick
import QtQuick.Layouts

TSText {
    Layout.fillWidth: true
    Layout.preferredHeight: 22
    font: TS.section
    color: TS.labelSub
    Accessible.role: Accessible.Heading
}
