// An outline icon in one colour.
import QtQuick

Image {
    id: root

    required property string name
    property color color: TS.label
    property real size: 16
    property real line: size <= 14 ? 1.4 : 1.5

    readonly property string rgba: String(Qt.rgba(color.r, color.g, color.b, 1)).slice(-6)
                                   + Math.round(color.a * 255).toString(16).padStart(2, "0")

    width: size
    height: size
    sourceSize: Qt.size(size * Screen.devicePixelRatio, size * Screen.devicePixelRatio)
    source: "image://icons/" + name + "/" + rgba + "/" + line * Screen.devicePixelRatio
}
