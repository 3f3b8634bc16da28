// The properties of the selected layer; how it is taken stays pinned at the bottom.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tessara

Rectangle {
    id: root

    required property Workspace workspace

    readonly property var editor: workspace.editor
    readonly property string kind: editor.kindName
    readonly property bool isGroup: kind === "group"
    readonly property bool isEdited: isGroup || (kind !== "" && !editor.isLocked)
    readonly property bool isLayer: isEdited && !isGroup
    readonly property bool hasFields: workspace.templateFields.count > 0

    color: TS.bg1

    // What is being typed belongs to what it was begun for.
    function commitTyped() {
        const typed = Window.activeFocusItem
        let place = typed
        while (place && place !== root)
            place = place.parent
        if (place && typed instanceof TSTextField)
            typed.commit()
    }

    function panelFor(kindName) {
        switch (kindName) {
        case "text": return textPanel
        case "image": return imagePanel
        case "shape": return shapePanel
        case "score": return scorePanel
        case "group": return groupPanel
        case "countdown": return countdownPanel
        default: return null
        }
    }

    Connections {
        target: root.editor
        function onAboutToFollow() { root.commitTyped() }
    }

    Component { id: textPanel; TextInspector { editor: root.editor } }
    Component { id: imagePanel; ImageInspector { editor: root.editor } }
    Component { id: shapePanel; ShapeInspector { editor: root.editor; workspace: root.workspace } }
    Component { id: scorePanel; ScoreInspector { editor: root.editor; workspace: root.workspace } }
    Component { id: groupPanel; GroupInspector { editor: root.editor; workspace: root.workspace } }
    Component { id: countdownPanel; CountdownInspector { editor: root.editor; workspace: root.workspace } }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Rectangle { // each keystroke is seen
            Layout.fillWidth: true
            implicitHeight: 3
            color: root.editor.isOnAir && root.workspace.isLive ? TS.onAir : "transparent"
        }
        RowLayout {
            Layout.fillWidth: true
            Layout.preferredHeight: 41
            Layout.leftMargin: TS.panelPadding
            Layout.rightMargin: TS.panelPadding
            spacing: 10
            TSIcon {
                visible: root.kind !== ""
                name: root.editor.typeIcon ?? ""
                color: TS.kindColors[root.kind] ?? TS.label
                size: 17
            }
            TSText { Layout.fillWidth: true; text: qsTr("INSPECTOR"); font: TS.heading; color: TS.labelSub }
            TSPillBadge {
                visible: root.editor.isOnAir === true && root.workspace.isLive
                text: qsTr("ON AIR")
                look: "air"
            }
        }
        TSDivider { isZone: true }
        Flickable {
            id: scroller

            Layout.fillWidth: true
            Layout.fillHeight: true
            visible: root.isEdited || root.hasFields
            clip: true
            contentHeight: panels.implicitHeight + 16
            boundsBehavior: Flickable.StopAtBounds
            ScrollBar.vertical: ScrollBar {}

            ColumnLayout {
                id: panels

                x: TS.panelPadding
                y: TS.gap
                width: scroller.width - 2 * TS.panelPadding
                spacing: 2

                TemplateFields {
                    objectName: "templateFields"
                    visible: root.hasFields
                    Layout.fillWidth: true
                    fields: root.workspace.templateFields
                }
                TSDivider { visible: root.hasFields }
                EmptyInspector {
                    visible: root.hasFields && !root.isEdited
                    Layout.fillWidth: true
                    Layout.preferredHeight: 180
                    isLocked: root.kind !== "" && !root.isEdited
                    selectionCount: root.editor.selectionCount ?? 0
                }
                TSFieldRow {
                    visible: root.isLayer
                    label: qsTr("Name")
                    TSTextField {
                        objectName: "nameField"
                        Layout.fillWidth: true
                        value: root.editor.name ?? ""
                        Accessible.name: qsTr("Name")
                        onEdited: (text) => root.editor.name = text
                    }
                }
                TSDivider { visible: root.isLayer }
                Loader {
                    Layout.fillWidth: true
                    sourceComponent: root.isEdited ? root.panelFor(root.kind) : null
                }
                TSDivider { visible: root.isLayer }
                TSSectionHeader { visible: root.isLayer; text: qsTr("Position") }
                TSNumberPair {
                    visible: root.isLayer
                    firstLabel: "X"
                    secondLabel: "Y"
                    first: root.editor.position?.x ?? 0
                    second: root.editor.position?.y ?? 0
                    onFirstEdited: (value) => root.editor.setPosition(value, second)
                    onSecondEdited: (value) => root.editor.setPosition(first, value)
                }
            }
        }
        EmptyInspector {
            visible: !root.isEdited && !root.hasFields
            Layout.fillWidth: true
            Layout.fillHeight: true
            isLocked: root.kind !== "" && root.editor.isLocked
            selectionCount: root.editor.selectionCount ?? 0
        }
        RunBlock {
            visible: root.kind !== ""
            Layout.fillWidth: true
            editor: root.editor
        }
    }
}
