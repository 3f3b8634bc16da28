// The design's colours, type, space and motion, each with one meaning.
pragma Singleton
import QtQuick

QtObject {
    // Surfaces
    readonly property color bg0: Qt.rgba(0.08, 0.08, 0.10, 1) // canvas surround, wells
    readonly property color bg1: Qt.rgba(0.11, 0.11, 0.14, 1) // panels, sheets
    readonly property color bg2: Qt.rgba(0.15, 0.15, 0.19, 1) // cards, rows, menus
    readonly property color bg3: Qt.rgba(0.19, 0.19, 0.24, 1) // secondary buttons
    readonly property color bg4: Qt.rgba(0.24, 0.24, 0.30, 1) // hover, chosen segment
    readonly property color ink: bg0 // on any filled colour
    readonly property color scrim: Qt.rgba(0.024, 0.024, 0.04, 0.70)

    // Meanings
    readonly property color accent: Qt.rgba(0.07, 0.62, 1.00, 1) // selection, focus, primary
    readonly property color onAir: Qt.rgba(1.00, 0.25, 0.30, 1) // on air and nothing else
    readonly property color cued: Qt.rgba(1.00, 0.75, 0.10, 1) // cued and nothing else
    readonly property color success: Qt.rgba(0.18, 0.82, 0.52, 1)
    readonly property color warning: Qt.rgba(1.00, 0.60, 0.10, 1)

    // Text and lines
    readonly property color label: Qt.rgba(1, 1, 1, 0.94)
    readonly property color labelSub: Qt.rgba(1, 1, 1, 0.72)
    readonly property color labelFade: Qt.rgba(1, 1, 1, 0.52)
    readonly property color border: Qt.rgba(1, 1, 1, 0.16)
    readonly property color borderMid: Qt.rgba(1, 1, 1, 0.09)

    // The kinds' icons
    readonly property var kindColors: ({
        "text": Qt.rgba(0.36, 0.61, 0.98, 1), "image": Qt.rgba(0.20, 0.82, 0.60, 1),
        "shape": Qt.rgba(0.65, 0.52, 0.98, 1), "score": Qt.rgba(0.98, 0.55, 0.22, 1),
        "web": Qt.rgba(0.22, 0.75, 0.97, 1), "model": Qt.rgba(0.85, 0.50, 0.95, 1),
        "windowCapture": Qt.rgba(0.22, 0.75, 0.97, 1), "countdown": Qt.rgba(0.36, 0.61, 0.98, 1)
    })

    // Type
    readonly property string family: "Inter Tabular"
    readonly property font title: Qt.font({ family: family, pixelSize: 16, weight: Font.Bold })
    readonly property font row: Qt.font({ family: family, pixelSize: 14, weight: Font.Medium })
    readonly property font body: Qt.font({ family: family, pixelSize: 13, weight: Font.Medium })
    readonly property font button: Qt.font({ family: family, pixelSize: 13, weight: Font.DemiBold })
    readonly property font hint: Qt.font({ family: family, pixelSize: 12, weight: Font.Normal })
    readonly property font section: Qt.font({ family: family, pixelSize: 12, weight: Font.DemiBold })
    readonly property font cap: Qt.font({ family: family, pixelSize: 11, weight: Font.Bold,
                                          letterSpacing: 0.55 })
    readonly property font heading: Qt.font({ family: family, pixelSize: 11, weight: Font.Bold,
                                              letterSpacing: 0.9 })

    // Radii, in device-independent pixels
    readonly property int radiusSmall: 4
    readonly property int radius: 6
    readonly property int radiusCard: 8
    readonly property int radiusSheet: 12

    // Space
    readonly property int gap: 8
    readonly property int panelPadding: 16
    readonly property int controlRow: 36
    readonly property int labelWidth: 84

    // Motion
    readonly property int hoverTime: 120
    readonly property int openTime: 180

    /// What a row can show of a name: the platform lays out the whole of a text that it elides.
    function shortened(text) { return text.length > 300 ? text.slice(0, 300) + "…" : text }
}
