import QtQuick
import QtQuick.Layouts
import Velmo.Controls

/// One setting: its name, what it is for, and at the right what changes it. A line parts it from the row above.
Item {
    id: row

    property string title
    property string subtitle
    property color subtitleColor: Theme.secondary
    property bool isFirst: false
    property real verticalPadding: 10
    property int titleWeight: Font.Medium
    property int titleSize: 14
    /// Whether the control lies below the texts, where there is no room beside them.
    property bool stacked: false
    property alias leading: before.data
    default property alias control: after.data

    implicitHeight: layout.height + 2 * verticalPadding

    Divider {
        visible: !row.isFirst
        width: parent.width
    }

    GridLayout {
        id: layout
        y: row.verticalPadding
        width: parent.width
        height: Math.max(36, implicitHeight)
        columns: row.stacked ? 1 : 3
        columnSpacing: before.visible ? 12 : 16
        rowSpacing: 8

        Row {
            id: before
            visible: children.length > 0
        }

        Column {
            Layout.fillWidth: true

            Label {
                width: parent.width
                wrapMode: Text.Wrap
                text: row.title
                size: row.titleSize
                weight: row.titleWeight
            }

            Label {
                width: parent.width
                visible: text.length > 0
                wrapMode: Text.Wrap
                text: row.subtitle
                size: 12
                color: row.subtitleColor
            }
        }

        Row {
            id: after
            visible: children.length > 0
            spacing: 8
        }
    }
}
