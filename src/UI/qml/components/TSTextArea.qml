// Several lines to type in; every keystroke counts at once.
import QtQuick
import QtQuick.Controls.Basic

Rectangle {
    id: root

    required property string value
    required property string label
    property real leastHeight: 58
    signal edited(string text)

    implicitHeight: Math.min(Math.max(leastHeight, area.contentHeight + 18), 118)
    radius: TS.radius
    color: TS.bg0
    border.width: area.activeFocus ? 2 : 1
    border.color: area.activeFocus ? TS.accent : TS.border
    onValueChanged: if (area.text !== value) area.text = value
    Component.onCompleted: area.text = value

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
            color: TS.label
            selectionColor: TS.accent
            selectedTextColor: TS.ink
            wrapMode: TextEdit.Wrap
            selectByMouse: true
            background: null
            onTextChanged: if (activeFocus && text !== root.value) root.edited(text)
            Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
            Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
        }
    }
}
