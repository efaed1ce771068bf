import QtQuick

/// A few words in a capsule, a count as a rule.
Rectangle {
    property alias text: label.text
    property alias size: label.size
    property alias weight: label.weight
    property alias textColor: label.color
    property int horizontalPadding: 8
    property int verticalPadding: 2

    implicitWidth: label.implicitWidth + 2 * horizontalPadding
    implicitHeight: label.implicitHeight + 2 * verticalPadding
    radius: height / 2
    color: Theme.inkAt(0.06)

    Label {
        id: label
        anchors.centerIn: parent
        size: 12
        weight: Font.Medium
        color: Theme.secondary
    }
}
