// Several lines to type in; every keystroke counts at once.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tessara

ColumnLayout {
    id: root

    required property string value
    required property string label
    property real leastHeight: 58
    signal edited(string text)

    // A longer one would hold the window up at every key; its beginning is shown, and cannot be
    // edited, since what is behind it must not get lost.
    readonly property int mostCharacters: 20000
    readonly property bool isTooLong: value.length > mostCharacters
    readonly property string shown: isTooLong ? value.slice(0, 1000) + "…" : value

    property PasteGuard guard: PasteGuard {
        field: area
        mostCharacters: root.mostCharacters
        onLongTextPasted: (text) => root.edited(text)
    }

    spacing: 4
    onShownChanged: if (area.text !== shown) area.text = shown
    Component.onCompleted: area.text = shown

    Rectangle {
        Layout.fillWidth: true
        implicitHeight: Math.min(Math.max(root.leastHeight, area.contentHeight + 18), 118)
        radius: TS.radius
        color: TS.bg0
        border.width: area.activeFocus ? 2 : 1
        border.color: area.activeFocus ? TS.accent : TS.border

        Flickable {
            id: scroller

            anchors { fill: parent; margins: 2 }
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            ScrollBar.vertical: ScrollBar {}

            TextArea.flickable: TextArea {
                id: area

                objectName: "area"
                Accessible.name: root.label
                padding: 7
                font: Qt.font({ family: TS.family, pixelSize: 14, weight: Font.Medium })
                color: root.isTooLong ? TS.labelSub : TS.label
                selectionColor: TS.accent
                selectedTextColor: TS.ink
                wrapMode: TextEdit.Wrap
                selectByMouse: true
                readOnly: root.isTooLong
                background: null
                onTextChanged: if (activeFocus && text !== root.shown) root.edited(text)
                Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
                Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
            }
        }
    }
    TSText {
        objectName: "tooLongNote"
        visible: root.isTooLong
        Layout.fillWidth: true
        wrapMode: Text.Wrap
        text: qsTr("This text is too long to be edited here.")
        font: TS.hint
        color: TS.labelSub
    }
    TSButton {
        objectName: "clearLongText"
        visible: root.isTooLong
        text: qsTr("Clear Text")
        onClicked: root.edited("")
    }
}
