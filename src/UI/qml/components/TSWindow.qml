// A window on the design's ground and in its type.
import QtQuick
import QtQuick.Controls.Basic

ApplicationWindow {
    visible: true
    color: TS.bg1
    font: TS.body
}
