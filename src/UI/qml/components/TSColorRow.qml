// A colour by its hex value and its alpha.
import QtQuick
import QtQuick.Layouts

TSFieldRow {
    id: root

    required property color value
    signal edited(color value)

    readonly property string hex: "#" + String(Qt.rgba(value.r, value.g, value.b, 1)).slice(-6).toUpperCase()

    Rectangle {
        Layout.preferredWidth: 28
        Layout.preferredHeight: 28
        radius: TS.radius
        color: root.value
        border { width: 1; color: TS.border }
    }
    TSTextField {
        Layout.fillWidth: true
        Layout.minimumWidth: 76
        leftPadding: 7
        rightPadding: 5
        value: root.hex
        maximumLength: 7
        Accessible.name: root.label + ", " + root.hex
        onEdited: (text) => {
            const digits = text.replace("#", "")
            if (!/^[0-9a-fA-F]{6}$/.test(digits))
                return
            const typed = Qt.color("#" + digits)
            root.edited(Qt.rgba(typed.r, typed.g, typed.b, root.value.a))
        }
    }
    TSTextField {
        Layout.preferredWidth: 58
        alignRight: true
        unit: "%"
        value: Math.round(root.value.a * 100)
        Accessible.name: root.label + ", " + qsTr("Opacity")
        onEdited: (text) => {
            const typed = Number(text)
            if (isFinite(typed) && text.trim() !== "")
                root.edited(Qt.rgba(root.value.r, root.value.g, root.value.b,
                                    Math.max(0, Math.min(100, typed)) / 100))
        }
    }
}
