// How a row stands, by colour, fill and word.
import QtQuick
import Tessara

Rectangle {
    id: root

    required property var record
    required property bool isLive

    readonly property bool isSolid: record.isOnAir && isLive && !record.isCued
    readonly property bool isMoving: isSolid && record.visibility > 0 && record.visibility < 1
    readonly property bool isHollow: record.isOnAir && !isLive && !record.isCued

    color: record.isCued ? TS.cued
         : isMoving ? Qt.tint(TS.bg2, Qt.alpha(TS.onAir, 0.26))
         : isSolid ? TS.onAir : TS.bg0
    border { width: isHollow ? 2 : 0; color: TS.onAir }

    Rectangle { // how far a running take has come
        visible: root.isMoving
        width: parent.width * root.record.visibility
        height: parent.height
        color: TS.onAir
    }
    Rectangle { // parts it from the tally
        width: 2
        height: parent.height
        visible: !root.isHollow
        color: TS.bg1
    }
    TSText {
        objectName: "stateText"
        anchors.centerIn: parent
        text: root.record.stateText
        font { family: TS.family; pixelSize: 12; weight: Font.Bold; letterSpacing: 0.4 }
        color: root.record.isCued || (root.isSolid && !root.isMoving) ? TS.ink
             : root.isMoving ? "white" : root.isHollow ? TS.label : TS.labelFade
    }
}
