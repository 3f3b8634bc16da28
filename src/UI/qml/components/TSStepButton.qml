// A button that goes on while the mouse holds it, and acts once for a key.
import QtQuick

TSButton {
    autoRepeat: true
    autoRepeatDelay: 400
    autoRepeatInterval: 125
    // A press by key would be held like one of the mouse, and step on.
    Keys.onSpacePressed: clicked()
}
