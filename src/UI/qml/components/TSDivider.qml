// A line between groups.
import QtQuick
import QtQuick.Layouts

Rectangle {
    property bool isZone: false

    Layout.fillWidth: true
    implicitHeight: 1
    color: isZone ? TS.border : TS.borderMid
}
