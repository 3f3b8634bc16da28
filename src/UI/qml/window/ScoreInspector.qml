// The properties of a score bar; what changes during the match stands first.
import QtQuick
import QtQuick.Layouts
import Tessara

ColumnLayout {
    id: root

    required property var editor
    required property Workspace workspace

    readonly property bool isAir: editor.isOnAir === true && workspace.isLive
    readonly property var templates: [
        { value: "compactStrip", label: qsTr("Compact Strip") },
        { value: "titleBar", label: qsTr("Title Bar") },
        { value: "wideBroadcast", label: qsTr("Wide Broadcast") }]
    readonly property var sports: [
        { value: "football", label: qsTr("Football") }, { value: "basketball", label: qsTr("Basketball") },
        { value: "volleyball", label: qsTr("Volleyball") }, { value: "badminton", label: qsTr("Badminton") },
        { value: "baseball", label: qsTr("Baseball") }, { value: "futsal", label: qsTr("Futsal") }]

    spacing: 2

    component TeamColumn: ColumnLayout {
        id: team

        required property string teamLabel
        required property string side
        required property string teamKey
        required property string scoreKey

        readonly property int score: root.editor[scoreKey] ?? 0

        Layout.fillWidth: true
        Layout.preferredWidth: 1
        spacing: TS.gap

        TSText { text: team.teamLabel; font: TS.hint; color: TS.labelSub }
        TSTextField {
            objectName: team.teamKey
            Layout.fillWidth: true
            isLive: true
            value: root.editor[team.teamKey] ?? ""
            Accessible.name: team.teamLabel
            onEdited: (text) => root.editor[team.teamKey] = text
        }
        TSText {
            objectName: team.scoreKey
            Layout.fillWidth: true
            Layout.preferredHeight: 44
            horizontalAlignment: Text.AlignHCenter
            text: team.score
            font { family: TS.family; pixelSize: 30; weight: Font.Bold }
            Rectangle { anchors.fill: parent; z: -1; radius: TS.radius; color: TS.bg0 }
        }
        RowLayout {
            spacing: TS.gap
            TSStepButton {
                Layout.fillWidth: true
                implicitHeight: 40
                iconName: "minus"
                help: qsTr("%1, one less").arg(team.side)
                onClicked: root.editor[team.scoreKey] = Math.max(0, team.score - 1)
            }
            TSStepButton {
                objectName: team.scoreKey + "Up"
                Layout.fillWidth: true
                implicitHeight: 40
                iconName: "plus"
                help: qsTr("%1, one more").arg(team.side)
                onClicked: root.editor[team.scoreKey] = team.score + 1
            }
        }
        TSText {
            Layout.fillWidth: true
            horizontalAlignment: Text.AlignHCenter
            text: team.side
            font: TS.hint
            color: TS.labelSub
        }
    }

    RowLayout {
        TSSectionHeader { Layout.fillWidth: true; text: qsTr("Score Control") }
        TSText { text: qsTr("Score Value"); font: TS.hint; color: TS.labelFade }
    }
    RowLayout {
        spacing: TS.gap
        TeamColumn {
            teamLabel: qsTr("Home Team")
            side: qsTr("Home")
            teamKey: "homeTeam"
            scoreKey: "homeScore"
        }
        TeamColumn {
            teamLabel: qsTr("Away Team")
            side: qsTr("Away")
            teamKey: "awayTeam"
            scoreKey: "awayScore"
        }
    }
    RowLayout {
        Layout.minimumHeight: TS.controlRow
        spacing: TS.gap
        TSTextField {
            objectName: "period"
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            isLive: true
            alignRight: true
            prefix: qsTr("Period")
            value: root.editor.period ?? ""
            Accessible.name: prefix
            onEdited: (text) => root.editor.period = text
        }
        TSTextField {
            objectName: "matchClock"
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            isLive: true
            alignRight: true
            prefix: qsTr("Clock")
            value: root.editor.clock ?? ""
            Accessible.name: prefix
            onEdited: (text) => root.editor.clock = text
        }
    }
    TSButton {
        objectName: "resetScore"
        Layout.topMargin: 24
        look: root.isAir ? "airOutline" : "secondary"
        text: qsTr("Reset to 0")
        iconName: "rotate-ccw"
        onClicked: { root.editor.homeScore = 0; root.editor.awayScore = 0 }
    }
    TSDivider { Layout.topMargin: 24 }
    TSSectionHeader { text: qsTr("Score Graphic") }
    TSFieldRow {
        label: qsTr("Template")
        TSPicker {
            objectName: "scoreTemplate"
            label: qsTr("Template")
            subject: root.editor.id
            choices: root.templates.map((template) => template.label)
            choice: root.templates.findIndex((template) => template.value === root.editor.template)
            onChosen: (row) => root.editor.template = root.templates[row].value
        }
    }
    TSFieldRow {
        label: qsTr("Sport Preset")
        TSPicker {
            objectName: "sportPreset"
            label: qsTr("Sport Preset")
            subject: root.editor.id
            choices: root.sports.map((sport) => sport.label)
            choice: root.sports.findIndex((sport) => sport.value === root.editor.sportPreset)
            onChosen: (row) => root.editor.sportPreset = root.sports[row].value
        }
    }
    RowLayout {
        Layout.topMargin: 24
        spacing: TS.gap
        TSButton {
            objectName: "applySport"
            look: root.isAir ? "airOutline" : "secondary"
            text: qsTr("Apply Preset")
            onClicked: root.editor.applySportPreset()
        }
        TSText {
            Layout.fillWidth: true
            wrapMode: Text.Wrap
            text: qsTr("Teams, scores, period and clock are replaced.")
            font: TS.hint
            color: TS.labelSub
        }
    }
    TSDivider { Layout.topMargin: 24 }
    SizeSection { editor: root.editor }
    TSDivider {}
    TSSectionHeader { text: qsTr("Appearance") }
    OpacityRow { editor: root.editor }
}
