// What a list says while it is empty.
import QtQuick

Column {
    id: root

    required property string iconName
    required property string text
    required property string hint

    spacing: TS.gap
    TSIcon {
        anchors.horizontalCenter: parent.horizontalCenter
        name: root.iconName
        size: 28
        color: TS.labelFade
    }
    TSText {
        anchors.horizontalCenter: parent.horizontalCenter
        text: root.text
        font { family: TS.family; pixelSize: 14; weight: Font.DemiBold }
    }
    TSText {
        visible: text !== ""
        anchors.horizontalCenter: parent.horizontalCenter
        horizontalAlignment: Text.AlignHCenter
        text: root.hint
        font: TS.hint
        color: TS.labelSub
    }
}
