import QtQuick
import Velmo.Controls
import Velmo.Models

/// Whether dictation is ready, listening or at work, how to go on, and what went wrong last.
Rectangle {
    id: card

    required property MenuBarView view
    readonly property bool _hasError: view.errorMessage.length > 0
    readonly property string _remark: _hasError ? view.errorMessage : view.notice
    readonly property color stateColor: view.isRecording ? Theme.red : view.isTranscribing ? Theme.blue : Theme.accent

    implicitHeight: content.implicitHeight + 28
    radius: Theme.radiusField
    color: Theme.card
    border.width: 1
    border.color: Qt.tint(color, Theme.faded(stateColor, 0.2))
    Accessible.role: Accessible.StatusBar
    Accessible.name: view.title + ", " + view.subtitle + (_remark.length > 0 ? ", " + _remark : "")

    Column {
        id: content
        x: 14
        y: 14
        width: parent.width - 28
        spacing: 12

        Item {
            width: parent.width
            // The same in every state, or what lies below would move when a dictation begins.
            implicitHeight: Math.max(icon.height, words.implicitHeight, title.height + words.spacing + idleSubtitle.height)

            Rectangle {
                id: icon
                anchors.verticalCenter: parent.verticalCenter
                width: 42
                height: 42
                radius: Theme.radiusField
                color: card.view.isRecording || card.view.isTranscribing ? Theme.faded(card.stateColor, 0.1) : Theme.tint

                Symbol {
                    anchors.centerIn: parent
                    name: card.view.isRecording ? "mic.fill" : card.view.isTranscribing ? "ellipsis.circle" : "mic"
                    pointSize: 17
                    weight: Symbol.Medium
                    color: card.stateColor
                }
            }

            Column {
                id: words
                anchors.left: icon.right
                anchors.leftMargin: 12
                anchors.right: live.visible ? live.left : parent.right
                anchors.verticalCenter: parent.verticalCenter
                spacing: 1

                Label {
                    id: title
                    text: card.view.title
                    size: 14
                    weight: Font.DemiBold
                    Accessible.ignored: true
                }

                Label {
                    width: parent.width
                    text: card.view.subtitle
                    size: 12
                    color: Theme.secondary
                    wrapMode: Text.Wrap
                    Accessible.ignored: true
                }
            }

            Label {
                id: idleSubtitle
                visible: false
                x: words.x
                width: parent.width - x
                text: card.view.idleSubtitle
                size: 12
                wrapMode: Text.Wrap
            }

            LiveBadge {
                id: live
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                visible: card.view.isRecording
            }
        }

        Divider {
            visible: card._remark.length > 0
            width: parent.width
        }

        Row {
            visible: card._remark.length > 0
            width: parent.width
            spacing: 8

            Symbol {
                id: remarkSymbol
                name: card._hasError ? "exclamationmark.triangle" : "info.circle"
                pointSize: 13
                color: card._hasError ? Theme.orangeText : Theme.secondary
            }

            Label {
                width: parent.width - x
                text: card._remark
                size: 12
                color: card._hasError ? Theme.orangeText : Theme.secondary
                wrapMode: Text.Wrap
                Accessible.ignored: true
            }
        }
    }
}
