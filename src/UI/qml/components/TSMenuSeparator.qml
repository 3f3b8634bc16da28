// Parts one kind of action of a menu from another.
import QtQuick
import QtQuick.Controls.Basic

MenuSeparator {
    height: visible ? implicitHeight : 0
    padding: 4
    contentItem: Rectangle { implicitHeight: 1; color: TS.borderMid }
}
