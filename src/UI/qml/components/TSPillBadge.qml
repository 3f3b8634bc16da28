// A word that tells a state.
import QtQuick

Rectangle {
    id: root

    required property string text
    property string look: "neutral" // air, cue, neutral, line

    readonly property bool isFilled: look === "air" || look === "cue"

    implicitWidth: word.implicitWidth + 14
    implicitHeight: 20
    radius: TS.radiusSmall
    color: look === "air" ? TS.onAir : look === "cue" ? TS.cued
         : look === "neutral" ? TS.borderMid : "transparent"
    border { width: look === "line" ? 1 : 0; color: TS.border }

    TSText {
        id: word
        anchors.centerIn: parent
        text: root.text
        font: TS.cap
        color: root.isFilled ? TS.ink : TS.label
    }
}
