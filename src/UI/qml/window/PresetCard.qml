// One preset to choose.
import QtQuick
import QtQuick.Controls.Basic
import Tessara

Rectangle {
    id: root

    required property string presetName
    required property string thumbnail
    property bool isSelected: false
    property bool isLive: false
    signal selected()
    signal approached() // it may be applied soon
    signal reached() // by the keyboard
    signal applied()

    readonly property int foot: 86

    radius: 10
    color: hover.hovered || isSelected ? TS.bg3 : TS.bg2

    HoverHandler { id: hover; onHoveredChanged: if (hovered) root.approached() }
    AbstractButton {
        id: picture

        objectName: "presetPicture"
        width: parent.width
        height: parent.height - root.foot
        focusPolicy: Qt.TabFocus
        Accessible.name: TS.shortened(root.presetName)
        Accessible.selected: root.isSelected
        onClicked: root.selected()
        onActiveFocusChanged: if (activeFocus) { root.selected(); root.approached(); root.reached() }

        background: Item {
            Rectangle { // the picture's own ground, until it has come
                width: parent.width
                height: parent.height
                radius: root.radius
                color: Qt.rgba(0.06, 0.06, 0.07, 1)
                Rectangle { y: parent.height / 2; width: parent.width; height: parent.height / 2; color: parent.color }
            }
        }
        contentItem: Image {
            objectName: "presetThumbnail"
            asynchronous: true
            sourceSize: Qt.size(Math.round(width * Screen.devicePixelRatio),
                                Math.round(height * Screen.devicePixelRatio))
            source: width > 0 ? root.thumbnail + "/" + root.radius * Screen.devicePixelRatio : ""
        }
    }
    TSText {
        x: 12
        y: picture.height + 8
        width: parent.width - 24
        height: 24
        text: TS.shortened(root.presetName)
        font { family: TS.family; pixelSize: 15; weight: Font.DemiBold }
    }
    TSButton {
        objectName: "presetApply"
        x: 12
        y: parent.height - 46
        width: parent.width - 24
        implicitHeight: 36
        look: root.isLive ? "airOutline" : "secondary"
        text: qsTr("Apply")
        Accessible.name: text + ", " + TS.shortened(root.presetName)
        onClicked: root.applied()
    }
    Rectangle {
        anchors.fill: parent
        visible: root.isSelected
        radius: root.radius
        color: "transparent"
        border { width: 2; color: TS.accent }
    }
}
