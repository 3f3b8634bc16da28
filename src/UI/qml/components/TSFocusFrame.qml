// Marks the row that the keyboard is on.
import QtQuick
import Tessara

Rectangle {
    anchors.fill: parent
    color: "transparent"
    border { width: 2; color: TS.accent }
}
