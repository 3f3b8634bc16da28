// Shows where the keyboard is, after it has been used.
import QtQuick

Rectangle {
    property Item control: parent

    anchors.fill: parent
    anchors.margins: -4
    visible: control.visualFocus
    radius: TS.radius + 4
    color: "transparent"
    border { width: 2; color: TS.accent }
}
