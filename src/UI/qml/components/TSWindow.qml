// A window in the design's colours, dialogs included.
import QtQuick
import QtQuick.Controls.Basic

ApplicationWindow {
    visible: true
    color: TS.bg1
    font: TS.body
    palette {
        window: TS.bg1
        windowText: TS.label
        base: TS.bg0
        alternateBase: TS.bg2
        text: TS.label
        placeholderText: TS.labelFade
        button: TS.bg3
        buttonText: TS.label
        brightText: TS.label
        highlight: TS.accent
        highlightedText: TS.ink
        light: Qt.tint(TS.bg1, Qt.alpha(TS.accent, 0.20))
        midlight: TS.bg4
        mid: TS.bg4
        dark: TS.labelSub
        shadow: TS.bg0
    }
}
