// What menus and popovers stand on.
import QtQuick

Rectangle {
    radius: TS.radiusCard
    color: TS.bg2
    border { width: 1; color: TS.border }
}
