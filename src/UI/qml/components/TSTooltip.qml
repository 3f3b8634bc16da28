// A word of help under the pointer.
import QtQuick
import QtQuick.Controls.Basic

ToolTip {
    id: root

    delay: 600
    padding: 0
    leftPadding: 8
    rightPadding: 8
    implicitHeight: 26
    contentItem: Text {
        text: root.text
        font: TS.section
        color: TS.bg0
        verticalAlignment: Text.AlignVCenter
    }
    background: Rectangle { radius: TS.radiusSmall; color: "#F2F4F8" }
}
