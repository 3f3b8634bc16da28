// A menu of actions.
import QtQuick
import QtQuick.Controls.Basic

Menu {
    id: root

    padding: 4
    implicitWidth: 190
    background: TSPopupSurface { implicitWidth: 190 }
    delegate: TSMenuItem {}
}
