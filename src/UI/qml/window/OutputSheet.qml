// Routing, devices and mode of the output; starts and stops it.
import QtQuick
import QtQuick.Layouts
import Tessara

TSSheet {
    id: root

    required property OutputModel output

    objectName: "outputSheet"
    width: 500
    isOnAir: output.isRunning
    onOpened: (output.isRunning ? closeButton : routing).forceActiveFocus(Qt.TabFocusReason)

    contentItem: ColumnLayout {
        spacing: 0

        RowLayout {
            Layout.fillWidth: true
            Layout.preferredHeight: 60
            Layout.leftMargin: 20
            Layout.rightMargin: 20
            spacing: 10
            TSText {
                text: qsTr("DeckLink Output")
                font { family: TS.family; pixelSize: 17; weight: Font.Bold }
            }
            Rectangle {
                implicitWidth: 8
                implicitHeight: 8
                radius: 4
                color: root.output.sdkAvailable ? TS.success : TS.labelFade
            }
            TSText {
                Layout.fillWidth: true
                text: root.output.sdkAvailable ? qsTr("SDK Available") : qsTr("SDK Not Found")
                color: TS.labelSub
            }
            TSPillBadge { visible: root.output.isRunning; text: qsTr("LIVE"); look: "air" }
        }
        TSDivider { isZone: true }
        ColumnLayout {
            Layout.fillWidth: true
            Layout.margins: 20
            Layout.topMargin: 12
            spacing: 4

            TSSectionHeader { text: qsTr("Device") }
            TSFieldRow {
                label: qsTr("Routing")
                TSPicker {
                    id: routing
                    objectName: "routing"
                    label: qsTr("Routing")
                    choices: root.output.routingLabels
                    choice: root.output.routing
                    enabled: root.output.sdkAvailable
                    isAir: root.output.isRunning
                    onChosen: (row) => root.output.routing = row
                }
            }
            TSFieldRow {
                label: qsTr("Fill Device")
                TSPicker {
                    objectName: "fillDevice"
                    label: qsTr("Fill Device")
                    choices: root.output.fillDevices
                    choice: root.output.fillDevice
                    emptyText: qsTr("Select Device")
                    enabled: root.output.sdkAvailable
                    onChosen: (row) => root.output.fillDevice = row
                }
            }
            TSFieldRow {
                label: qsTr("Resolution")
                TSPicker {
                    objectName: "resolution"
                    label: qsTr("Resolution")
                    choices: root.output.modes
                    choice: root.output.mode
                    emptyText: qsTr("Select Resolution")
                    enabled: root.output.sdkAvailable && root.output.fillDevice >= 0
                    onChosen: (row) => root.output.mode = row
                }
            }
            TSFieldRow {
                visible: root.output.isKeyAndFill
                label: qsTr("Key Device")
                TSPicker {
                    objectName: "keyDevice"
                    label: qsTr("Key Device")
                    choices: root.output.keyDevices
                    choice: root.output.keyDevice
                    emptyText: qsTr("Select Key Device")
                    enabled: root.output.sdkAvailable
                    onChosen: (row) => root.output.keyDevice = row
                }
            }
            TSBanner {
                visible: root.output.isKeyAndFill
                Layout.topMargin: 6
                text: root.output.keyModeStatus
                isFailure: false
                iconName: root.output.isKeyModeReady ? "circle-check" : "triangle-alert"
                iconColor: root.output.isKeyModeReady ? TS.success : TS.warning
            }
            TSBanner {
                visible: root.output.isKeyAndFillAB
                Layout.topMargin: 6
                text: qsTr("A+B Key Mode")
                detail: qsTr("CH A = Fill  ·  CH B = Key (External Keying)")
                isFailure: false
                iconName: "columns-2"
                iconColor: TS.label
            }
            TSBanner {
                visible: root.output.isGreenScreen
                Layout.topMargin: 6
                text: qsTr("Green Screen Mode")
                detail: qsTr("Full-color output with green background for chroma key.")
                isFailure: false
                iconName: "square"
                iconColor: TS.success
            }
            TSBanner {
                objectName: "fillError"
                visible: root.output.fillError !== ""
                Layout.topMargin: 6
                text: root.output.fillError
            }
            TSBanner {
                objectName: "keyError"
                visible: root.output.isKeyAndFill && root.output.keyError !== ""
                Layout.topMargin: 6
                text: root.output.keyError
            }
        }
        TSDivider { isZone: true }
        RowLayout {
            Layout.fillWidth: true
            Layout.preferredHeight: 64
            spacing: 0

            TSButton {
                Layout.leftMargin: 20
                text: qsTr("Refresh")
                iconName: "refresh-cw"
                onClicked: root.output.refresh()
            }
            TSButton {
                id: closeButton
                objectName: "closeButton"
                Layout.leftMargin: TS.gap
                text: qsTr("Close")
                onClicked: root.close()
            }
            Item { Layout.fillWidth: true }
            Rectangle {
                Layout.fillHeight: true
                implicitWidth: airButtons.implicitWidth + 40
                color: "transparent"
                Rectangle { // rounded where the sheet is
                    anchors { fill: parent; rightMargin: 1; bottomMargin: 1 }
                    radius: TS.radiusSheet - 1
                    color: TS.bg0
                    Rectangle { width: parent.width; height: parent.height / 2; color: TS.bg0 }
                    Rectangle { width: parent.width / 2; height: parent.height; color: TS.bg0 }
                }
                Rectangle { width: 1; height: parent.height; color: TS.border }
                RowLayout {
                    id: airButtons
                    anchors.centerIn: parent
                    spacing: TS.gap
                    TSButton {
                        objectName: "stopButton"
                        visible: root.output.isRunning
                        text: qsTr("Stop")
                        look: "air"
                        iconName: "square"
                        onClicked: root.output.stop()
                    }
                    TSButton {
                        objectName: "startButton"
                        text: root.output.isRunning ? qsTr("Restart") : qsTr("Start Output")
                        look: "airOutline"
                        iconName: root.output.isRunning ? "rotate-ccw" : "play"
                        enabled: root.output.canStart
                        onClicked: root.output.start()
                    }
                }
            }
        }
    }
}
