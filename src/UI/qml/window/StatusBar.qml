// The state of the output, always in sight.
import QtQuick
import QtQuick.Layouts
import Tessara

Rectangle {
    id: root

    required property OutputModel output
    signal sheetRequested

    function focusOutputButton() { outputButton.forceActiveFocus() }

    implicitHeight: 44
    color: TS.bg1

    RowLayout {
        anchors { fill: parent; leftMargin: TS.panelPadding; rightMargin: TS.gap }
        spacing: TS.gap

        Rectangle {
            implicitWidth: 8
            implicitHeight: 8
            radius: 4
            color: root.output.sdkAvailable ? TS.success : TS.labelFade
        }
        TSText {
            text: root.output.sdkAvailable ? qsTr("DeckLink SDK") : qsTr("SDK Not Found")
            color: root.output.sdkAvailable ? TS.label : TS.labelSub
        }
        Rectangle { implicitWidth: 1; implicitHeight: 18; color: TS.border }
        TSText {
            objectName: "statusMessage"
            visible: root.output.statusMessage !== ""
            Layout.maximumWidth: Math.ceil(implicitWidth) + 1
            Layout.fillWidth: true
            text: root.output.statusMessage
            font: TS.hint
            color: TS.labelSub
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }
        Rectangle {
            visible: root.output.fillError !== ""
            Layout.fillWidth: true
            Layout.maximumWidth: Math.ceil(failure.implicitWidth) + 42
            implicitHeight: 28
            radius: TS.radius
            color: TS.warning
            Accessible.role: Accessible.AlertMessage
            Accessible.name: root.output.fillError
            TSIcon { x: 8; anchors.verticalCenter: parent.verticalCenter; name: "circle-alert"; color: TS.ink }
            TSText {
                id: failure
                objectName: "statusError"
                anchors { fill: parent; leftMargin: 30; rightMargin: 10 }
                text: root.output.fillError
                font: TS.button
                color: TS.ink
            }
        }
        TSButton {
            look: "quiet"
            iconName: "refresh-cw"
            help: qsTr("Refresh DeckLink Devices")
            onClicked: root.output.refresh()
        }
        Item { Layout.fillWidth: true }
        Rectangle { Layout.leftMargin: 24; implicitWidth: 1; implicitHeight: 24; color: TS.border }
        OutputButton {
            id: outputButton
            Layout.leftMargin: 6
            isRunning: root.output.isRunning
            onClicked: root.sheetRequested()
        }
    }
}
