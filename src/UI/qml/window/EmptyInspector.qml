// What the inspector says when there is nothing to edit.
import QtQuick
import Tessara

Item {
    id: root

    required property bool isLocked
    required property int selectionCount

    Column {
        anchors.centerIn: parent
        width: parent.width - 2 * TS.panelPadding
        spacing: 10
        TSIcon {
            anchors.horizontalCenter: parent.horizontalCenter
            name: root.isLocked ? "lock" : "sliders-horizontal"
            size: 28
            color: TS.labelFade
        }
        TSText {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: root.isLocked ? qsTr("Layer is locked")
                : root.selectionCount > 1 ? qsTr("%n layers are selected", "", root.selectionCount)
                : qsTr("Select a layer to edit its properties")
            color: TS.labelSub
        }
    }
}
