pragma ComponentBehavior: Bound

import QtQuick
import Velmo.Controls
import Velmo.Flow
import Velmo.Models
import Velmo.Window

/// The learned words by language; they can only be looked at.
Column {
    id: learned

    required property list<learnedWordGroup> groups

    topPadding: 8
    spacing: 8

    Column {
        x: 4
        width: parent.width - 4

        Label {
            text: qsTr("Learned Words")
            size: 14
            weight: Font.DemiBold
            Accessible.role: Accessible.Heading
        }

        Label {
            width: parent.width
            text: qsTr("Automatically learned from your transcriptions.")
            fixedLineHeight: 20
            color: Theme.secondary
            wrapMode: Text.Wrap
        }
    }

    Card {
        width: parent.width
        height: groupColumn.height + 34

        Column {
            id: groupColumn
            width: parent.width
            spacing: 16

            Repeater {
                model: learned.groups

                Column {
                    id: group

                    required property learnedWordGroup modelData

                    width: groupColumn.width
                    spacing: 8

                    Label {
                        text: group.modelData.heading
                        size: 11
                        weight: Font.DemiBold
                        capitals: true
                        color: Theme.secondary
                        Accessible.role: Accessible.Heading
                    }

                    FlowLayout {
                        width: parent.width
                        height: implicitHeight
                        spacing: 6

                        Repeater {
                            model: group.modelData.words

                            LearnedChip {
                                width: Math.min(implicitWidth, group.width)
                            }
                        }
                    }
                }
            }
        }
    }
}
