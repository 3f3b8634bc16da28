// A choice of many, in a menu.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts

ComboBox {
    id: root

    required property string label
    required property var choices // texts
    required property int choice // a row, -1 for none
    property string emptyText: ""
    property bool isAir: false
    property var subject: null // whose choice it is
    signal chosen(int row)

    readonly property string choiceTexts: choices.join("\n")

    Layout.fillWidth: true
    implicitHeight: 32
    opacity: enabled ? 1 : 0.38
    font: TS.body
    model: choices
    currentIndex: choice
    displayText: choice < 0 ? emptyText : currentText
    wheelEnabled: false
    focusPolicy: Qt.TabFocus
    Accessible.name: label
    // A row of the open menu would else be a choice of something else.
    onSubjectChanged: closeMenu()
    onChoiceTextsChanged: closeMenu()
    onActivated: (row) => {
        chosen(row)
        currentIndex = Qt.binding(() => root.choice)
    }

    function closeMenu() {
        if (down)
            popup.close()
    }

    background: Rectangle {
        radius: TS.radius
        color: root.hovered && root.enabled ? TS.bg4 : TS.bg3
        border.width: root.isAir ? 2 : 1
        border.color: root.isAir ? TS.onAir : TS.borderMid
        TSFocusRing { control: root }
    }
    indicator: TSIcon {
        x: root.width - width - 10
        y: (root.height - height) / 2
        name: "chevron-down"
        size: 14
        color: TS.labelSub
    }
    contentItem: TSText {
        leftPadding: 10
        rightPadding: 30
        text: root.displayText
        color: root.choice < 0 ? TS.labelFade : TS.label
    }
    delegate: ItemDelegate {
        id: row

        required property int index
        required property string modelData

        width: ListView.view.width
        height: 32
        highlighted: root.highlightedIndex === index
        Accessible.name: modelData
        background: Rectangle {
            radius: TS.radiusSmall
            color: row.highlighted ? TS.bg4 : "transparent"
        }
        contentItem: TSText {
            text: row.modelData
            rightPadding: 20
            TSIcon {
                visible: row.index === root.choice
                anchors { right: parent.right; verticalCenter: parent.verticalCenter }
                name: "check"
                size: 14
            }
        }
    }
    popup: Popup {
        // A click opens the menu and leaves the keys where they are: the menu borrows them.
        property Item lender: null

        onAboutToShow: {
            lender = root.activeFocus ? null : root.Window.activeFocusItem
            root.forceActiveFocus(Qt.PopupFocusReason)
        }
        onClosed: {
            if (root.activeFocus)
                lender?.forceActiveFocus(Qt.PopupFocusReason)
            lender = null
        }
        y: root.height + 4
        width: root.width
        height: Math.min(contentItem.implicitHeight + 8, root.Window.height - 32)
        padding: 4
        contentItem: ListView {
            clip: true
            implicitHeight: contentHeight
            model: root.popup.visible ? root.delegateModel : null
            currentIndex: root.highlightedIndex
            ScrollBar.vertical: ScrollBar {}
        }
        background: TSPopupSurface {}
    }
}
