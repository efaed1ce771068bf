import QtQuick
import Velmo.Controls

/// Every shared control, side by side.
Rectangle {
    width: 720
    height: 640
    color: Theme.window

    Column {
        x: 24
        y: 24
        spacing: 20

        Row {
            spacing: 16
            PrimaryButton { text: "Save" }
            PrimaryButton { text: "Save"; enabled: false }
            SecondaryButton { text: "Cancel" }
            SecondaryButton { text: "Sync Now"; small: true; symbolName: "arrow.clockwise"; anchors.verticalCenter: parent.verticalCenter }
            SecondaryButton { text: "Sync Now"; small: true; busy: true; symbolName: "arrow.clockwise"; anchors.verticalCenter: parent.verticalCenter }
            SymbolButton { symbolName: "pencil"; text: "Edit"; anchors.verticalCenter: parent.verticalCenter }
            Toggle { anchors.verticalCenter: parent.verticalCenter }
            Toggle { checked: true; anchors.verticalCenter: parent.verticalCenter }
            ProgressRing { size: 20; anchors.verticalCenter: parent.verticalCenter }
        }

        Row {
            spacing: 16
            TextField { placeholderText: "Add a new word..." }
            TextField { text: "Bodø"; focus: true }
            SearchField { placeholderText: "Search"; text: "tromsø" }
        }

        Row {
            spacing: 16
            Segments { choices: ["Selected languages", "Spoken language"] }
            KeyCap { text: "Right Control" }
            KeyCap { text: "Press a key…"; capturing: true }
            Chip { text: "Bodø" }
        }

        Row {
            spacing: 16
            TextArea { width: 280; text: "Kan du sende meg\nreferatet fra møtet? 😀" }
            Card {
                width: 200
                height: 80
                Label { text: "Welcome to Velmo"; size: 14; weight: Font.Medium }
            }
            Badge { text: "14 words" }
            Badge { text: "Coming Soon"; color: Theme.tint; textColor: Theme.accent; weight: Font.DemiBold; horizontalPadding: 14; verticalPadding: 6 }
        }

        Row {
            spacing: 40
            Repeater {
                model: [SoftShadow.Level.Handle, SoftShadow.Level.Overlay, SoftShadow.Level.Menu, SoftShadow.Level.Sheet]
                Item {
                    id: raised
                    required property int modelData
                    width: 100
                    height: 48
                    SoftShadow { anchors.fill: parent; level: raised.modelData }
                    Rectangle { anchors.fill: parent; radius: Theme.radiusCard }
                }
            }
        }

        Column {
            Repeater {
                model: [28, 24, 20, 18, 16, 14, 13, 12, 11]
                Rectangle {
                    id: line
                    required property int modelData
                    width: label.width
                    height: label.height
                    color: Theme.tint
                    Label { id: label; size: line.modelData; text: "Welcome to Velmo Ågj" }
                }
            }
        }
    }

    Grid {
        x: 420
        y: 330
        columns: 10
        spacing: 8
        Repeater {
            model: ["mic", "mic.fill", "house", "book", "gearshape", "trash", "waveform", "waveform.circle.fill", "ellipsis.circle",
                "checkmark.circle.fill", "person.circle", "power", "pencil", "globe", "apple.logo", "sparkles"]
            Symbol { required property string modelData; name: modelData; pointSize: 15 }
        }
    }
}
