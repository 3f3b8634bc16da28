// On or off; the whole row is the switch.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts

AbstractButton {
    id: root

    required property bool isOn
    property color onColor: TS.accent
    signal toggledTo(bool isOn)

    Layout.fillWidth: true
    implicitHeight: TS.controlRow
    focusPolicy: Qt.TabFocus
    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.checked: isOn
    onClicked: toggledTo(!isOn)

    contentItem: Item {
        TSText {
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - 44
            text: root.text
            color: TS.labelSub
        }
        Rectangle {
            anchors { right: parent.right; verticalCenter: parent.verticalCenter }
            width: 36
            height: 20
            radius: 10
            color: root.isOn ? root.onColor : TS.bg4
            Rectangle {
                x: root.isOn ? 18 : 2
                y: 2
                width: 16
                height: 16
                radius: 8
                color: "white"
            }
            TSFocusRing { control: root; radius: 14 }
        }
    }
}
