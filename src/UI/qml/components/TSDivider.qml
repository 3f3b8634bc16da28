// A line between groups.
import QtQuick
import QtQuick.Layouts

Rectangle {
    property bool isZone: false

    Layout.fillWidth: true
    Layout.topMargin: isZone ? 0 : 8
    Layout.bottomMargin: isZone ? 0 : 6
    implicitHeight: 1
    color: isZone ? TS.border : TS.borderMid
}
