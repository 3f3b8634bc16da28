// Runs the show from a list, beside whatever else is on the screen.
import QtQuick
import QtQuick.Layouts
import Tessara

TSWindow {
    id: root

    required property Workspace workspace
    property bool requireTake: false

    readonly property var runlist: workspace.runlist

    flags: Qt.Window | Qt.WindowStaysOnTopHint
    visible: false
    width: 380
    height: 580
    minimumWidth: 340
    minimumHeight: 420
    title: qsTr("Runlist")

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        RowLayout {
            Layout.fillWidth: true
            Layout.preferredHeight: 64
            Layout.leftMargin: TS.panelPadding
            Layout.rightMargin: TS.panelPadding
            spacing: TS.gap

            Column {
                Layout.fillWidth: true
                spacing: 1
                TSText { text: qsTr("Runlist"); font: TS.title }
                Row {
                    spacing: 6
                    Rectangle {
                        visible: root.runlist.onAirCount > 0
                        anchors.verticalCenter: parent.verticalCenter
                        width: 9
                        height: 9
                        radius: 5
                        color: root.workspace.isLive ? TS.onAir : "transparent"
                        border { width: 2; color: TS.onAir }
                    }
                    TSText {
                        objectName: "onAirCount"
                        text: root.runlist.onAirCount === 1 ? qsTr("1 item on air")
                              : qsTr("%1 items on air").arg(root.runlist.onAirCount)
                        font: TS.body
                        color: root.runlist.onAirCount > 0 ? TS.label : TS.labelFade
                    }
                }
            }
            TSToggle {
                objectName: "cueMode"
                Layout.fillWidth: false
                Layout.preferredWidth: 116
                text: qsTr("Cue Mode")
                isOn: root.requireTake
                onColor: TS.cued
                onToggledTo: (isOn) => root.requireTake = isOn
            }
        }
        Rectangle {
            Layout.fillWidth: true
            implicitHeight: root.requireTake ? 3 : 1
            color: root.requireTake ? TS.cued : TS.border
        }
        RunlistRows {
            objectName: "runlistRows"
            Layout.fillWidth: true
            Layout.fillHeight: true
            focus: true
            workspace: root.workspace
            place: "window"
            isCueMode: root.requireTake
            emptyHint: qsTr("Add layers in the main window first")
        }
        TSDivider { isZone: true }
        ColumnLayout {
            Layout.fillWidth: true
            Layout.margins: 16
            Layout.topMargin: 14
            spacing: 18

            TSButton {
                objectName: "takeAllCues"
                visible: root.requireTake
                Layout.fillWidth: true
                look: "cue"
                text: qsTr("TAKE ALL CUES")
                enabled: root.runlist.cueCount > 0
                Accessible.name: text + ", " + cuedText.text
                onPressed: root.workspace.document.takeCues()
                contentItem: RowLayout {
                    spacing: 10
                    TSIcon { Layout.leftMargin: 6; name: "corner-right-up"; color: TS.ink; size: 18 }
                    TSText {
                        Layout.fillWidth: true
                        text: qsTr("TAKE ALL CUES")
                        color: TS.ink
                        font { family: TS.family; pixelSize: 16; weight: Font.Bold }
                    }
                    TSText {
                        id: cuedText
                        objectName: "cuedCount"
                        Layout.rightMargin: 6
                        text: root.runlist.cueCount === 1 ? qsTr("1 item")
                              : qsTr("%1 items").arg(root.runlist.cueCount)
                        color: TS.ink
                        font: TS.button
                    }
                }
            }
            TSButton {
                objectName: "allOut"
                look: "airOutline"
                text: qsTr("ALL OUT")
                iconName: "power"
                enabled: root.runlist.onAirCount > 0
                onPressed: root.runlist.takeAllOut()
            }
        }
    }
}
