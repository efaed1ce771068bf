import QtQuick
import QtQuick.Layouts
import QtQuick.Window
import Velmo.Controls
import Velmo.Models

/// How dictated text is processed: the switch, the built-in modes and the person's own.
Page {
    id: page

    required property ModeView view

    /// The person wants to give the service one.
    signal languageModelWanted()

    title: qsTr("Mode")
    description: qsTr("Choose how Velmo processes your dictated text. Modes with AI processing use GPT to refine the output.")
    descriptionWidth: 672
    Component.onCompleted: view.appear()
    onVisibleChanged: if (visible) view.appear()

    Binding {
        target: page.view
        property: "isShown"
        value: page.visible && page.Window.visibility !== Window.Hidden && page.Window.visibility !== Window.Minimized
    }

    SmartFormattingCard {
        width: parent.width
        mode: page.view
    }

    RowLayout {
        width: parent.width
        visible: page.view.problem.length > 0
        spacing: 12

        Warning {
            Layout.fillWidth: true
            Layout.leftMargin: 4
            maximumWidth: width
            text: page.view.problem
        }

        SecondaryButton {
            small: true
            text: qsTr("Choose One…")
            Accessible.description: page.view.problem
            onClicked: page.languageModelWanted()
        }
    }

    Column {
        width: parent.width
        topPadding: 4
        spacing: 8

        SectionHeading {
            text: qsTr("Built-in Modes")
        }

        ModeGrid {
            id: builtIn
            width: parent.width
            modes: page.view.builtInModes
            dimmed: !page.view.smartFormatting
            onChosen: id => page.view.choose(id)
            onLeftBelow: custom.enter()
        }
    }

    Column {
        width: parent.width
        topPadding: 4
        spacing: 8

        Item {
            width: parent.width
            height: 28

            SectionHeading {
                y: 4
                text: qsTr("Custom Modes")
            }

            SecondaryButton {
                id: newMode
                anchors.right: parent.right
                small: true
                symbolName: "plus"
                text: qsTr("New Mode")
                onClicked: page.view.openNewSheet()
            }
        }

        ModeGrid {
            id: custom
            width: parent.width
            visible: page.view.hasCustomModes
            modes: page.view.customModes
            dimmed: !page.view.smartFormatting
            editable: true
            onChosen: id => page.view.choose(id)
            onEditRequested: row => page.view.openEditSheet(row)
            onRemoveRequested: row => page.view.removeRow(row)
            onLeftAbove: builtIn.enter()
            onEmptied: reason => newMode.forceActiveFocus(reason)
        }

        EmptyState {
            width: parent.width
            height: 104
            visible: !page.view.hasCustomModes
            title: qsTr("No custom modes yet")
            description: qsTr("Create a mode with your own AI prompt")
        }
    }

    ModeSheet {
        sheet: page.view.sheet
    }
}
