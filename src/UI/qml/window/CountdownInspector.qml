// The properties of a countdown, and its buttons.
import QtQuick
import QtQuick.Layouts
import Tessara

ColumnLayout {
    id: root

    required property var editor
    required property Workspace workspace

    spacing: 2

    RowLayout {
        Layout.fillWidth: true
        TSSectionHeader { text: qsTr("Timer") }
        TSText { text: root.editor.formattedTime ?? ""; font: TS.button }
    }
    TSFieldRow {
        label: qsTr("Seconds")
        TSTextField {
            objectName: "countdownSeconds"
            Layout.fillWidth: true
            alignRight: true
            unit: "s"
            value: Math.round(root.editor.totalSeconds ?? 0)
            Accessible.name: qsTr("Seconds")
            onEdited: (text) => {
                const typed = Number(text)
                if (isFinite(typed) && typed >= 0 && text.trim() !== "")
                    root.editor.setCountdownTime(typed)
            }
        }
    }
    RowLayout {
        Layout.fillWidth: true
        spacing: TS.gap
        TSButton {
            objectName: "countdownStart"
            Layout.fillWidth: true
            text: qsTr("Start")
            iconName: "play"
            enabled: !root.editor.isRunning && root.editor.remainingSeconds > 0
            onClicked: root.editor.startCountdown()
        }
        TSButton {
            Layout.fillWidth: true
            text: qsTr("Pause")
            iconName: "pause"
            enabled: root.editor.isRunning === true
            onClicked: root.editor.pauseCountdown()
        }
    }
    TSButton {
        Layout.topMargin: 4
        text: qsTr("Reset")
        iconName: "rotate-ccw"
        look: root.editor.isOnAir && root.workspace.isLive ? "airOutline" : "secondary"
        onClicked: root.editor.resetCountdown()
    }
    TSDivider { Layout.topMargin: 6 }
    TSSectionHeader { text: qsTr("Text") }
    TSSliderRow {
        label: qsTr("Size")
        value: root.editor.fontSize ?? 96
        from: 8
        to: 400
        typedTo: 2400
        stepSize: 1
        unit: "px"
        onEdited: (value) => root.editor.fontSize = value
    }
    TSColorRow {
        label: qsTr("Color")
        value: root.editor.textColor ?? "white"
        onEdited: (value) => root.editor.textColor = value
    }
    TSToggle {
        text: qsTr("Background")
        isOn: root.editor.showBackground ?? false
        onToggledTo: (isOn) => root.editor.showBackground = isOn
    }
    TSColorRow {
        visible: root.editor.showBackground === true
        label: qsTr("BG Color")
        value: root.editor.backgroundColor ?? "black"
        onEdited: (value) => root.editor.backgroundColor = value
    }
    TSDivider {}
    TSSectionHeader { text: qsTr("Alerts") }
    TSSliderRow {
        label: qsTr("Warn at")
        value: root.editor.warningThreshold ?? 0
        to: 300
        stepSize: 1
        unit: "s"
        onEdited: (value) => root.editor.warningThreshold = value
    }
    TSColorRow {
        label: qsTr("Warn")
        value: root.editor.warningColor ?? "orange"
        onEdited: (value) => root.editor.warningColor = value
    }
    TSSliderRow {
        label: qsTr("Alert at")
        value: root.editor.urgentThreshold ?? 0
        to: 300
        stepSize: 1
        unit: "s"
        onEdited: (value) => root.editor.urgentThreshold = value
    }
    TSColorRow {
        label: qsTr("Alert")
        value: root.editor.urgentColor ?? "red"
        onEdited: (value) => root.editor.urgentColor = value
    }
    TSDivider {}
    TSSectionHeader { text: qsTr("Appearance") }
    TSSliderRow {
        label: qsTr("Corner")
        value: root.editor.cornerRadius ?? 0
        to: 200
        stepSize: 1
        onEdited: (value) => root.editor.cornerRadius = value
    }
    OpacityRow { editor: root.editor }
    TSDivider {}
    SizeSection { editor: root.editor }
}
