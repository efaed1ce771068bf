pragma ComponentBehavior: Bound

import QtQuick

/// A shadow of stacked translucent rectangles, since the software scene graph draws no effects. Lies beneath the element
/// it is anchored to.
Item {
    id: shadow

    enum Level { None, Handle, Overlay, Menu, Popover, Sheet }

    property int level: SoftShadow.Level.Menu
    property real radius: Theme.radiusCard

    // Count of rectangles, darkness and offset for each level.
    readonly property var _recipe: [[0, 0, 0], [3, 0.32, 1], [10, 0.16, 2], [12, 0.15, 4], [16, 0.18, 6], [20, 0.20, 8]][level]
    readonly property int _count: _recipe[0]

    Repeater {
        model: shadow._count

        Rectangle {
            required property int index
            readonly property int grown: index + 1

            x: -grown
            y: -grown + shadow._recipe[2]
            width: shadow.width + 2 * grown
            height: shadow.height + 2 * grown
            radius: shadow.radius + grown
            color: Theme.shadowAt(shadow._recipe[1] * (2 * (shadow._count - grown) + 1) / (shadow._count * shadow._count))
        }
    }
}
