// One line to type in; reports what was typed when it is finished.
import QtQuick
import QtQuick.Controls.Basic

TextField {
    id: root

    property string value: ""
    property string prefix: ""
    property string unit: ""
    property bool alignRight: false
    signal edited(string text)

    // As much as can be looked through in one line; whoever edits it writes another text.
    readonly property string shown: value.slice(0, 2000)

    // Typing shows at once what it does; otherwise on Return or on leaving.
    property bool isLive: false

    // What comes back for it is what was typed, or what its owner has made of that.
    property bool isReporting: false

    implicitHeight: 32
    leftPadding: 9 + (prefixText.visible ? prefixText.implicitWidth + 8 : 0)
    rightPadding: 9 + (unitText.visible ? unitText.implicitWidth + 4 : 0)
    font: TS.body
    color: TS.label
    selectionColor: TS.accent
    selectedTextColor: TS.ink
    placeholderTextColor: TS.labelFade
    horizontalAlignment: alignRight ? TextInput.AlignRight : TextInput.AlignLeft
    selectByMouse: true
    text: shown
    opacity: enabled ? 1 : 0.38

    onShownChanged: if (!isReporting) text = shown
    onTextEdited: {
        isReporting = isLive
        if (isLive)
            edited(text)
        isReporting = false
    }
    onActiveFocusChanged: if (activeFocus) selectAll(); else commit()
    onAccepted: { commit(); selectAll() }
    Keys.onEscapePressed: (event) => { text = shown; event.accepted = true; focus = false }

    function commit() {
        if (!isLive && text !== shown)
            edited(text)
        text = Qt.binding(() => root.shown)
    }

    background: Rectangle {
        radius: TS.radius
        color: TS.bg0
        border.width: root.activeFocus ? 2 : 1
        border.color: root.activeFocus ? TS.accent : TS.border
    }
    TSText {
        id: prefixText
        visible: root.prefix !== ""
        x: 9
        height: parent.height
        text: root.prefix
        color: TS.labelFade
    }
    TSText {
        id: unitText
        visible: root.unit !== ""
        anchors { right: parent.right; rightMargin: 9 }
        height: parent.height
        text: root.unit
        color: TS.labelFade
        font: TS.hint
    }
}
