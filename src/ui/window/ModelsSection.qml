pragma ComponentBehavior: Bound

import QtQuick
import Velmo.Controls
import Velmo.Models

/// The models of the speech engine: got, chosen, and on their way.
SettingsSection {
    id: section

    required property SpeechView speech

    symbolName: "brain.head.profile"
    title: qsTr("Speech Models")

    Repeater {
        model: section.speech.models

        Column {
            id: model

            required property int index
            required property string name
            required property string details
            required property string page
            required property bool installed
            required property bool inUse
            required property bool arriving
            required property double arrived

            width: parent.width

            SettingsRow {
                width: parent.width
                isFirst: model.index === 0
                title: model.name
                subtitle: model.details

                Badge {
                    anchors.verticalCenter: parent.verticalCenter
                    visible: model.inUse
                    text: qsTr("In use")
                }

                SecondaryButton {
                    anchors.verticalCenter: parent.verticalCenter
                    small: true
                    visible: !model.inUse
                    enabled: model.installed || model.arriving || model.page.length > 0 || !section.speech.isModelArriving
                    text: model.arriving ? qsTr("Cancel") : model.installed ? qsTr("Use")
                        : model.page.length > 0 ? qsTr("Open Page") : qsTr("Get")
                    Accessible.name: text + " " + model.name
                    onClicked: {
                        if (model.arriving)
                            section.speech.cancelModel(model.name)
                        else if (model.installed)
                            section.speech.useModel(model.name)
                        else if (model.page.length > 0)
                            Qt.openUrlExternally(model.page)
                        else
                            section.speech.getModel(model.name)
                    }
                }
            }

            ProgressBar {
                visible: model.arriving
                width: parent.width
                value: model.arrived
                Accessible.name: model.name + ", " + model.details
            }

            Item {
                visible: model.arriving
                width: 1
                height: 12
            }
        }
    }

    Warning {
        visible: text.length > 0
        maximumWidth: parent.width
        bottomPadding: 14
        text: section.speech.modelsProblem
    }
}
