// A value by hand or by typing. The wheel scrolls the panel and never changes it.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts

TSFieldRow {
    id: root

    required property real value
    property real from: 0
    property real to: 1
    property real stepSize: 0.01
    property int decimals: 0
    property string unit: ""
    property bool isPercent: false
    // What may be typed, where it is more than what can be dragged.
    property real typedTo: to
    signal edited(real value)

    readonly property real shown: isPercent ? value * 100 : value

    Slider {
        id: slider

        Layout.fillWidth: true
        implicitHeight: 28
        from: root.from
        to: root.to
        stepSize: root.stepSize
        value: root.value
        wheelEnabled: false
        focusPolicy: Qt.TabFocus
        Accessible.name: root.label
        onMoved: root.edited(value)
        Keys.onPressed: (event) => {
            const direction = event.key === Qt.Key_Right ? 1 : event.key === Qt.Key_Left ? -1 : 0
            if (direction === 0 || !(event.modifiers & Qt.ShiftModifier))
                return
            root.edited(Math.max(from, Math.min(to, value + direction * 10 * stepSize)))
            event.accepted = true
        }

        background: Rectangle {
            x: 7
            y: (slider.height - height) / 2
            width: slider.width - 14
            height: 4
            radius: 2
            color: TS.bg4
            Rectangle {
                width: slider.visualPosition * parent.width
                height: 4
                radius: 2
                color: TS.accent
            }
        }
        handle: Rectangle {
            x: slider.visualPosition * (slider.width - 14)
            y: (slider.height - height) / 2
            width: 14
            height: 14
            radius: 7
            color: "white"
            Rectangle {
                anchors { fill: parent; margins: -5 }
                visible: slider.hovered || slider.pressed || slider.visualFocus
                z: -1
                radius: 12
                color: Qt.alpha(TS.accent, 0.28)
            }
        }
        // A press on the track binds anew once the drag is over.
        Binding on value { when: !slider.pressed; value: root.value }
    }
    TSTextField {
        Layout.preferredWidth: 66
        implicitHeight: 28
        alignRight: true
        unit: root.isPercent ? "%" : root.unit
        value: root.shown.toFixed(root.isPercent ? 0 : root.decimals)
        Accessible.name: root.label
        onEdited: (text) => {
            const typed = Number(text)
            if (isFinite(typed) && text.trim() !== "")
                root.edited(Math.max(root.from, Math.min(root.typedTo, root.isPercent ? typed / 100 : typed)))
        }
    }
}
