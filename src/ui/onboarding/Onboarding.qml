pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Velmo.Controls
import Velmo.Models

/// The set-up: what Velmo needs, one step after the other.
Rectangle {
    id: root

    required property OnboardingView onboarding

    readonly property real _stepsEnd: column.y + column.height
    readonly property real _height: Math.max(680, (onboarding.isAllDone ? end.y + end.height : footer.y + footer.height) + 14)

    color: Theme.window

    Flickable {
        anchors.fill: parent
        contentWidth: width
        contentHeight: root._height
        interactive: height < contentHeight
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        T.ScrollBar.vertical: ScrollBar {}

        Column {
            id: column
            x: 40
            y: 30
            width: parent.width - 80

            Row {
                anchors.horizontalCenter: parent.horizontalCenter
                spacing: 12

                Symbol {
                    anchors.verticalCenter: parent.verticalCenter
                    name: "waveform.circle.fill"
                    pointSize: 28
                    color: Theme.accent
                }

                Label {
                    text: qsTr("Welcome to Velmo")
                    size: 28
                    weight: Font.Bold
                    Accessible.role: Accessible.Heading
                }
            }

            Item {
                width: 1
                height: 4
            }

            Label {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                text: qsTr("A few quick steps so Velmo can type for you.")
                size: 14
                color: Theme.secondary
            }

            Item {
                width: 1
                height: 22
            }

            Column {
                width: parent.width
                spacing: 13

                Repeater {
                    model: root.onboarding.steps

                    StepCard {
                        width: parent.width
                        folded: root.onboarding.isAllDone
                        onActed: root.onboarding.act()
                    }
                }
            }
        }

        LanguageLine {
            id: language
            x: 44
            y: root._stepsEnd + 14
            width: parent.width - 88
            onboarding: root.onboarding
        }

        Row {
            id: footer
            visible: !root.onboarding.isAllDone
            anchors.horizontalCenter: parent.horizontalCenter
            y: Math.max(632, language.y + language.height + 12)
            height: 28
            spacing: 10
            Accessible.role: Accessible.StatusBar
            Accessible.name: waiting.text

            ProgressRing {
                anchors.verticalCenter: parent.verticalCenter
                size: 16
            }

            Label {
                id: waiting
                anchors.verticalCenter: parent.verticalCenter
                text: root.onboarding.waitingText
                color: Theme.secondary
                Accessible.ignored: true
            }

            SecondaryButton {
                visible: root.onboarding.isKeyless
                small: true
                text: qsTr("Done")
                onClicked: root.onboarding.done()
            }
        }

        AllSet {
            id: end
            readonly property real _top: language.y + language.height

            y: _top + Math.max(20, (680 - _top - height) / 2)
            width: parent.width
            trial: root.onboarding.trial
            shown: root.onboarding.isAllDone
            text: root.onboarding.doneText
            onDone: root.onboarding.done()
        }
    }

    // While a trigger key is chosen, every key belongs to the choice.
    Item {
        readonly property TriggerKeyCapture key: root.onboarding.triggerKey
        readonly property bool capturing: key.isCapturing

        focus: capturing
        onCapturingChanged: if (capturing) forceActiveFocus(Qt.OtherFocusReason)
        onActiveFocusChanged: if (!activeFocus) key.cancel()
        Keys.onShortcutOverride: event => event.accepted = capturing
        Keys.onPressed: event => {
            event.accepted = capturing
            if (capturing && !event.isAutoRepeat)
                key.press(event.key, event.nativeScanCode)
        }
    }
}
