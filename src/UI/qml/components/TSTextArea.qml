// Several lines to type in; every keystroke counts at once.
import QtQuick
import QtQuick.Controls.Basic

ScrollView {
    id: root

    required property string value
    required property string label
    signal edited(string text)

    implicitHeight: Math.min(Math.max(58, area.implicitHeight), 118)

    TextArea {
        id: area

        Accessible.name: root.label
        padding: 9
        font: Qt.font({ family: TS.family, pixelSize: 14, weight: Font.Medium })
        color: TS.label
        selectionColor: TS.accent
        selectedTextColor: TS.ink
        wrapMode: TextEdit.Wrap
        selectByMouse: true
        text: root.value
        onTextChanged: if (activeFocus && text !== root.value) root.edited(text)
        KeyNavigation.priority: KeyNavigation.BeforeItem
        KeyNavigation.tab: nextItemInFocusChain(true)
        KeyNavigation.backtab: nextItemInFocusChain(false)
        background: Rectangle {
            radius: TS.radius
            color: TS.bg0
            border.width: area.activeFocus ? 2 : 1
            border.color: area.activeFocus ? TS.accent : TS.border
        }
        Connections {
            target: root
            function onValueChanged() { if (area.text !== root.value) area.text = root.value }
        }
    }
}
