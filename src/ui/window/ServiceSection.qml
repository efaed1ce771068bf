pragma ComponentBehavior: Bound

import QtQuick
import Velmo.Controls
import Velmo.Models

/// Which service recognises speech, whether it runs, and what it understands.
SettingsSection {
    id: section

    required property SpeechView speech

    topGap: 0
    symbolName: "waveform"
    title: qsTr("Speech Service")

    SettingsRow {
        width: parent.width
        isFirst: true
        title: section.speech.address
        subtitle: section.speech.standing
        subtitleColor: mark.isTrouble ? Theme.orangeText : Theme.secondary
        Accessible.role: Accessible.StaticText
        Accessible.name: title + ", " + subtitle

        leading: Item {
            id: mark
            readonly property bool isTrouble: section.speech.isSilent || (!section.speech.isAnswering && !ring.visible)

            anchors.verticalCenter: parent?.verticalCenter
            implicitWidth: 20
            implicitHeight: 20

            ProgressRing {
                id: ring
                visible: section.speech.isAsking
                size: 20
            }

            Symbol {
                visible: !ring.visible
                name: mark.isTrouble ? "exclamationmark.circle.fill" : "checkmark.circle.fill"
                pointSize: 16
                color: mark.isTrouble ? Theme.orangeText : Theme.success
            }
        }
    }

    Note {
        width: parent.width
        visible: text.length > 0
        text: section.speech.remedy
        bottomMargin: 12
    }

    SettingsRow {
        width: parent.width
        visible: section.speech.engine.length > 0
        title: qsTr("Engine")
        subtitle: section.speech.engine
    }

    SettingsRow {
        width: parent.width
        visible: section.speech.understood.length > 0
        title: qsTr("Understands")
        subtitle: section.speech.understood
    }

    Flow {
        id: marks
        width: parent.width
        visible: section.speech.understood.length > 0
        spacing: 16
        bottomPadding: 12
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Selected languages")

        Repeater {
            model: section.speech.languages

            Row {
                id: language

                required property string name
                required property bool understood

                spacing: 6
                Accessible.role: Accessible.ListItem
                Accessible.name: name + ", " + (understood ? qsTr("understood") : qsTr("not understood"))

                Symbol {
                    anchors.verticalCenter: parent.verticalCenter
                    name: language.understood ? "checkmark.circle.fill" : "exclamationmark.circle.fill"
                    pointSize: 13
                    color: language.understood ? Theme.success : Theme.orangeText
                }

                Label {
                    text: language.name
                    Accessible.ignored: true
                }
            }
        }
    }

    Warning {
        visible: text.length > 0
        maximumWidth: parent.width
        bottomPadding: 14
        text: section.speech.languagesProblem
    }
}
