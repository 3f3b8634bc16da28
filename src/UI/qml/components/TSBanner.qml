// A warning that stays until its cause is gone.
import QtQuick
import QtQuick.Layouts

Rectangle {
    id: root

    required property string text
    property bool isFailure: true
    property string iconName: "triangle-alert"
    property color iconColor: TS.warning
    property string detail: ""

    Layout.fillWidth: true
    implicitHeight: Math.max(36, words.implicitHeight + 16)
    radius: TS.radius
    color: isFailure ? Qt.alpha(TS.warning, 0.14) : TS.bg2
    border { width: isFailure ? 1 : 0; color: TS.warning }
    Accessible.role: isFailure ? Accessible.AlertMessage : Accessible.StaticText
    Accessible.name: text

    TSIcon {
        x: 12
        y: 9
        name: root.iconName
        size: 18
        color: root.iconColor
    }
    Column {
        id: words
        anchors { left: parent.left; leftMargin: 40; right: parent.right; rightMargin: 12
                  verticalCenter: parent.verticalCenter }
        spacing: 2
        TSText {
            width: parent.width
            text: root.text
            font: root.isFailure || root.detail !== "" ? TS.button : TS.body
            wrapMode: Text.Wrap
        }
        TSText {
            visible: root.detail !== ""
            width: parent.width
            text: root.detail
            font: TS.hint
            color: TS.labelSub
            wrapMode: Text.Wrap
        }
    }
}
