// A monitor for an operator without hardware.
import QtQuick
import QtQuick.Dialogs
import QtQuick.Layouts
import Tessara

TSWindow {
    id: root

    property string channel: ""

    width: 960
    height: 640
    minimumWidth: 640
    minimumHeight: 400
    title: qsTr("Tessara Monitor")
    color: TS.bg0

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Rectangle {
            Layout.fillWidth: true
            implicitHeight: 52
            color: TS.bg1

            RowLayout {
                anchors { fill: parent; leftMargin: TS.panelPadding; rightMargin: TS.panelPadding }
                spacing: TS.gap
                TSSegmented {
                    label: qsTr("Device")
                    Layout.maximumWidth: 280
                    options: [{ value: 0, label: "Virtual Card 1" }, { value: 1, label: "Virtual Card 2" }]
                    value: monitor.device
                    onChosen: (value) => monitor.device = value
                }
                TSSegmented {
                    label: qsTr("Signal")
                    Layout.maximumWidth: 280
                    options: [{ value: "fill", label: qsTr("Fill") }, { value: "key", label: qsTr("Key") },
                              { value: "composite", label: qsTr("Composite") }]
                    value: monitor.mode
                    onChosen: (value) => monitor.mode = value
                }
                Item { Layout.fillWidth: true }
                TSButton {
                    text: monitor.background == "" ? qsTr("Background") : qsTr("Checkerboard")
                    iconName: monitor.background == "" ? "image" : "x"
                    onClicked: monitor.background == "" ? backgroundDialog.open() : monitor.background = ""
                }
            }
        }
        TSDivider { isZone: true }
        MonitorView {
            id: monitor

            objectName: "monitor"
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.margins: TS.panelPadding
            channel: root.channel

            Column {
                anchors.centerIn: parent
                visible: !monitor.hasSignal
                spacing: TS.gap
                TSText {
                    anchors.horizontalCenter: parent.horizontalCenter
                    text: qsTr("No signal")
                    font: TS.title
                }
                TSText {
                    anchors.horizontalCenter: parent.horizontalCenter
                    text: qsTr("Start an output on the virtual card to see it here.")
                    font: TS.hint
                    color: TS.labelSub
                }
            }
        }
        TSDivider { isZone: true }
        TSText {
            objectName: "description"
            Layout.fillWidth: true
            Layout.preferredHeight: 32
            leftPadding: TS.panelPadding
            text: monitor.description
            font: TS.hint
            color: TS.labelSub
        }
    }
    FileDialog {
        id: backgroundDialog
        title: qsTr("Background")
        options: FileDialog.DontUseNativeDialog
        nameFilters: [qsTr("Pictures") + " (*.png *.jpg *.jpeg *.webp)"]
        onAccepted: monitor.background = selectedFile
    }
}
