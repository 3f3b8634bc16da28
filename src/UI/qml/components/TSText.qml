// A line of text in the interface.
import QtQuick

Text {
    font: TS.body
    color: TS.label
    verticalAlignment: Text.AlignVCenter
    elide: Text.ElideRight
    textFormat: Text.PlainText
}
