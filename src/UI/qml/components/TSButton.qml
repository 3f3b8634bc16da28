// A button; `look` tells how much weight it has.
import QtQuick
import QtQuick.Controls.Basic

AbstractButton {
    id: root

    property string look: "secondary" // secondary, primary, quiet, air, airOutline, cue
    property string iconName: ""
    property string help: ""

    readonly property bool isAir: look === "air" || look === "airOutline" || look === "cue"
    readonly property bool isFilled: look === "primary" || look === "air" || look === "cue"
    readonly property color inkColor: isFilled ? TS.ink : TS.label
    readonly property color baseColor: look === "primary" ? TS.accent
                                     : look === "air" ? TS.onAir
                                     : look === "cue" ? TS.cued
                                     : look === "secondary" ? TS.bg3 : "transparent"
    readonly property color hoverColor: look === "secondary" ? TS.bg4
                                      : look === "quiet" ? TS.bg3
                                      : look === "airOutline" ? Qt.alpha(TS.onAir, 0.14)
                                      : Qt.tint(baseColor, Qt.rgba(1, 1, 1, 0.06))

    implicitHeight: look === "cue" ? 48 : isAir ? 36 : 32
    implicitWidth: Math.max(implicitHeight, implicitContentWidth + leftPadding + rightPadding)
    leftPadding: text === "" ? 0 : 12
    rightPadding: leftPadding
    opacity: enabled ? 1 : 0.38
    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    font: TS.button
    Accessible.name: text !== "" ? text : help
    Keys.onReturnPressed: if (!isAir) clicked()
    Keys.onEnterPressed: if (!isAir) clicked()

    background: Rectangle {
        radius: TS.radius
        color: root.down || root.hovered ? root.hoverColor : root.baseColor
        border.width: root.look === "airOutline" ? 2 : root.look === "secondary" ? 1 : 0
        border.color: root.look === "airOutline" ? TS.onAir : TS.borderMid
        Behavior on color { ColorAnimation { duration: root.isAir ? 0 : TS.hoverTime } }
        TSFocusRing { control: root }
    }
    contentItem: Item {
        implicitWidth: row.implicitWidth
        Row {
            id: row
            anchors.centerIn: parent
            spacing: 7
            TSIcon {
                visible: root.iconName !== ""
                anchors.verticalCenter: parent.verticalCenter
                name: root.iconName
                color: root.inkColor
            }
            TSText {
                visible: root.text !== ""
                anchors.verticalCenter: parent.verticalCenter
                text: root.text
                font: root.font
                color: root.inkColor
            }
        }
    }

    TSTooltip { visible: root.help !== "" && root.hovered && !root.isAir; text: root.help }
}
