// The tools that add a layer; it pushes the list down.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Dialogs
import QtQuick.Layouts
import Tessara

Rectangle {
    id: root

    required property Workspace workspace
    property bool isOpen: false
    signal presetsRequested()

    readonly property var tools: [
        { icon: "type", kind: "text", label: qsTr("Title Text"), detail: qsTr("Text overlay on canvas"),
          run: () => workspace.addTitle() },
        { icon: "shapes", kind: "shape", label: qsTr("Shape"), detail: qsTr("Rectangle, ellipse, polygon..."),
          run: null },
        { icon: "image", kind: "image", label: qsTr("Picture"), detail: qsTr("Import an image file"),
          run: () => pictureDialog.open() },
        { icon: "trophy", kind: "score", label: qsTr("Score Bar"), detail: qsTr("Live sports scoreboard"),
          run: () => workspace.addScoreBar() },
        { icon: "clock-4", kind: "text", label: qsTr("Timer"), detail: qsTr("Realtime clock / stopwatch"),
          run: () => workspace.addClock() },
        { icon: "timer", kind: "countdown", label: qsTr("Countdown"), detail: qsTr("Countdown timer with alerts"),
          run: () => workspace.addCountdown() },
        { icon: "gallery-vertical-end", kind: "preset", label: qsTr("Presets"),
          detail: qsTr("Browse & apply saved presets"), run: () => presetsRequested() }
    ]

    implicitHeight: isOpen ? 36 + 1 + 36 * tools.length + 9 : 0
    visible: implicitHeight > 0
    clip: true
    color: TS.bg2
    onIsOpenChanged: if (isOpen) rows.itemAt(0).forceActiveFocus()
    Keys.onEscapePressed: isOpen = false
    Behavior on implicitHeight { NumberAnimation { duration: TS.openTime; easing.type: Easing.OutCubic } }

    RowLayout {
        x: TS.panelPadding
        width: parent.width - 26
        height: 36
        TSText { Layout.fillWidth: true; text: qsTr("Add Layer"); font: TS.button }
        TSPillBadge { visible: root.workspace.isLive; text: qsTr("ON AIR"); look: "air" }
    }
    TSDivider { y: 36; width: parent.width }
    Column {
        x: 6
        y: 41
        width: parent.width - 12
        Repeater {
            id: rows
            model: root.tools
            AbstractButton {
                id: tool

                required property var modelData
                required property int index

                width: parent.width
                height: 36
                hoverEnabled: true
                focusPolicy: Qt.TabFocus
                text: modelData.label
                objectName: "tool" + index
                Accessible.name: text
                Accessible.description: modelData.detail
                onClicked: {
                    if (!modelData.run)
                        return shapeMenu.popup(tool, tool.width + 6, 0)
                    root.isOpen = false // and takes the focus along, which a sheet then gets
                    modelData.run()
                }
                Keys.onReturnPressed: clicked()
                Keys.onRightPressed: if (!modelData.run) clicked()
                Keys.onUpPressed: if (index > 0) rows.itemAt(index - 1).forceActiveFocus(Qt.TabFocusReason)
                Keys.onDownPressed: if (index + 1 < rows.count) rows.itemAt(index + 1).forceActiveFocus(Qt.TabFocusReason)

                background: Rectangle {
                    radius: TS.radius
                    color: tool.hovered || tool.down ? TS.bg4 : "transparent"
                    border { width: tool.visualFocus ? 2 : 0; color: TS.accent }
                }
                contentItem: RowLayout {
                    spacing: 12
                    TSIcon {
                        Layout.leftMargin: 10
                        name: tool.modelData.icon
                        size: 17
                        color: TS.kindColors[tool.modelData.kind] ?? TS.label
                    }
                    Column {
                        Layout.fillWidth: true
                        TSText { width: parent.width; text: tool.text; font: TS.button; height: 16 }
                        TSText { width: parent.width; text: tool.modelData.detail; font: TS.hint
                                 color: TS.labelSub; height: 15 }
                    }
                    TSIcon {
                        visible: !tool.modelData.run
                        Layout.rightMargin: 8
                        name: "chevron-right"
                        color: TS.labelSub
                    }
                }
            }
        }
    }
    TSMenu {
        id: shapeMenu

        objectName: "shapeMenu"
        Instantiator {
            model: root.workspace.shapeKinds
            onObjectAdded: (index, item) => shapeMenu.insertItem(index, item)
            onObjectRemoved: (index, item) => shapeMenu.removeItem(item)
            TSMenuItem {
                required property var modelData
                text: modelData.label
                iconName: modelData.icon
                iconColor: TS.kindColors["shape"]
                onTriggered: { root.workspace.addShape(modelData.name); root.isOpen = false }
            }
        }
    }
    FileDialog {
        id: pictureDialog

        objectName: "pictureDialog"
        title: qsTr("Import an image file")
        options: FileDialog.DontUseNativeDialog
        nameFilters: [qsTr("Pictures") + " (*.png *.jpg *.jpeg *.webp *.svg *.gif *.tif *.tiff *.bmp)"]
        onAccepted: root.workspace.addPicture(selectedFile)
    }
}
