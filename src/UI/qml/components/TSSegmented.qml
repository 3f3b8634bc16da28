// A choice of a few, all of them in sight.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts

FocusScope {
    id: root

    required property string label
    required property var options // [{value, label, icon, badge}]
    required property var value
    signal chosen(var value)

    implicitHeight: 32
    implicitWidth: row.implicitWidth + 4
    Layout.fillWidth: true
    Accessible.role: Accessible.PageTabList
    Accessible.name: label

    function chooseNext(step) {
        const at = options.findIndex((option) => option.value === value)
        const next = Math.max(0, Math.min(options.length - 1, at + step))
        if (next !== at)
            chosen(options[next].value)
    }

    Rectangle {
        anchors.fill: parent
        radius: TS.radius
        color: TS.bg0
        border { width: 1; color: TS.borderMid }
    }
    RowLayout {
        id: row

        anchors { fill: parent; margins: 2 }
        spacing: 2
        Repeater {
            model: root.options
            AbstractButton {
                id: segment

                required property var modelData
                readonly property bool isChosen: modelData.value === root.value

                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: implicitContentWidth
                Layout.minimumWidth: implicitContentWidth + 4
                focusPolicy: isChosen ? Qt.TabFocus : Qt.NoFocus
                hoverEnabled: true
                text: modelData.label
                Accessible.role: Accessible.PageTab
                Accessible.name: root.label + ", " + text
                Accessible.selected: isChosen
                onClicked: root.chosen(modelData.value)
                Keys.onLeftPressed: root.chooseNext(-1)
                Keys.onRightPressed: root.chooseNext(1)

                background: Rectangle {
                    radius: TS.radiusSmall
                    color: segment.isChosen ? TS.bg4 : segment.hovered ? TS.bg2 : "transparent"
                    Rectangle {
                        visible: segment.isChosen
                        anchors { bottom: parent.bottom; horizontalCenter: parent.horizontalCenter }
                        width: parent.width
                        height: 2
                        radius: 1
                        color: TS.accent
                    }
                    TSFocusRing { control: segment }
                }
                contentItem: Item {
                    implicitWidth: content.implicitWidth
                    Row {
                        id: content
                        anchors.centerIn: parent
                        spacing: 4
                        TSIcon {
                            visible: segment.modelData.icon !== undefined
                            anchors.verticalCenter: parent.verticalCenter
                            name: segment.modelData.icon ?? ""
                            size: 14
                        }
                        TSText {
                            anchors.verticalCenter: parent.verticalCenter
                            text: segment.text
                            font: TS.section
                        }
                        TSPillBadge {
                            visible: segment.modelData.badge !== undefined
                            text: segment.modelData.badge ?? ""
                        }
                    }
                }
            }
        }
    }
}
