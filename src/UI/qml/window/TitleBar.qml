// The head of the main window. Nothing here goes on air.
import QtQuick
import QtQuick.Layouts
import Tessara

Rectangle {
    id: root

    signal runlistRequested()

    implicitHeight: 48
    color: TS.bg1

    RowLayout {
        anchors { fill: parent; leftMargin: TS.panelPadding; rightMargin: TS.panelPadding }
        spacing: 10

        Rectangle {
            implicitWidth: 28
            implicitHeight: 28
            radius: TS.radius
            color: TS.bg3
            TSIcon { anchors.centerIn: parent; name: "film"; color: TS.accent; size: 18 }
        }
        TSText {
            text: qsTr("Tessara")
            font { family: TS.family; pixelSize: 15; weight: Font.Bold }
        }
        TSText {
            Layout.fillWidth: true
            text: qsTr("Broadcast Graphics")
            color: TS.labelFade
        }
        TSButton {
            objectName: "runlistButton"
            iconName: "play"
            help: qsTr("Runlist")
            onClicked: root.runlistRequested()
        }
    }
}
