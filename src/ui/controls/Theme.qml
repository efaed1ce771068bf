pragma Singleton

import QtQuick
import Velmo.Controls

/// Every colour of the interface, and the measures and times its parts share. All are product decisions; contrasts are
/// noted where text depends on them. What Qt draws by itself has its colours from prepareInterface().
QtObject {
    readonly property color accent: "#1A7A4A" // white on it 5.4:1
    readonly property color accentHover: "#16683F"
    readonly property color accentPressed: "#125634"
    readonly property color onFill: "#FFFFFF" // words and symbols on a fill, and what slides on one
    readonly property color tint: "#E8F5ED" // accent on it 4.8:1
    readonly property color heroEnd: "#F4FAF6"
    readonly property color window: "#EDEDF2"
    readonly property color field: "#F5F5F7"
    readonly property color rowHover: "#ECECF0"
    readonly property color buttonPressed: "#E4E4E9"
    readonly property color signIn: "#000000"
    readonly property color signInHover: "#2A2A2A"
    readonly property color signInPressed: "#3A3A3A"
    readonly property color card: "#FFFFFF"
    readonly property color ink: "#121212" // 16:1 on window
    readonly property color secondary: "#545454" // 6.5:1 on window
    readonly property color placeholder: "#6B6B70" // 4.9:1 on field; never lighter
    readonly property color success: "#4DB04F" // granted check marks only
    readonly property color orange: "#E07B00" // outlines, never text
    readonly property color orangeText: "#A84B00" // 5.7:1 on card
    readonly property color red: "#C4161C"
    readonly property color stop: "#E02D33"
    readonly property color blue: "#1D64D8"
    readonly property color capsule: Qt.rgba(0x14 / 255, 0x19 / 255, 0x17 / 255, 0.88)
    readonly property color capsuleOpaque: "#141917"
    readonly property color handle: "#141F17"
    readonly property color warningOnDark: "#FFB454"
    readonly property color switchOff: "#85858B" // 3:1 on card
    readonly property color hairline: inkAt(0.08)
    readonly property color cardHairline: Qt.tint(card, hairline) // an outline lies on what is beneath the card
    readonly property color outline: inkAt(0.14)
    readonly property color outlineHover: inkAt(0.28)
    readonly property color keyOutline: "#DEDEDE" // the outline on white; it lies on the key's dark side
    readonly property color scrim: inkAt(0.32)
    readonly property color scrollBar: inkAt(0.22)

    // Laid over what is hovered or pressed.
    readonly property color hoverRow: inkAt(0.04)
    readonly property color hoveredRow: "#F0F0F2" // covers what lies beneath
    readonly property color hoverSymbol: inkAt(0.06)
    readonly property color pressed: inkAt(0.10)

    readonly property int radiusSmall: 6 // symbol buttons, menu items, key caps
    readonly property int radiusRow: 8 // rows, chips, small buttons
    readonly property int radiusField: 10 // fields, buttons, menus, status card
    readonly property int radiusCard: 12 // cards, sheets, popover

    readonly property int hoverTime: motion(120)
    readonly property int sheetTime: motion(180)
    readonly property int heroTime: motion(200)
    readonly property int tipTime: motion(200)
    readonly property int onboardingTime: motion(300)
    readonly property int menuLeaveTime: motion(100)
    readonly property int ringTime: 900
    readonly property real disabledOpacity: 0.4

    /// Whether the desktop asks for less motion.
    readonly property bool reducedMotion: Motion.isReduced

    function inkAt(opacity: real): color {
        return Qt.rgba(0x12 / 255, 0x12 / 255, 0x12 / 255, opacity)
    }

    /// On what is dark.
    function lightAt(opacity: real): color {
        return Qt.rgba(1, 1, 1, opacity)
    }

    function shadowAt(opacity: real): color {
        return Qt.rgba(0, 0, 0, opacity)
    }

    function faded(full: color, opacity: real): color {
        return Qt.rgba(full.r, full.g, full.b, opacity)
    }

    function motion(milliseconds: int): int {
        return reducedMotion ? 0 : milliseconds
    }

    /// The height of a line of text of that pixel size.
    function lineHeight(pixelSize: int): int {
        const heights = { 28: 36, 24: 32, 20: 28, 18: 24, 16: 24, 15: 20, 14: 20, 13: 18, 12: 16, 11: 16, 9: 12 }
        return heights[pixelSize] ?? Math.round(pixelSize * 1.4)
    }

    // Asked once: a metrics object for each text would cost as much as the text.
    readonly property FontMetrics _metrics: FontMetrics {
        font.family: "Inter"
        font.pixelSize: 100
        font.hintingPreference: Font.PreferNoHinting
    }

    /// From the highest ascender to the lowest descender.
    function letterHeight(pixelSize: int): real {
        return _metrics.height * pixelSize / 100
    }

    function letterSpacing(pixelSize: int): real {
        return pixelSize === 28 ? -0.4 : pixelSize === 24 ? -0.24 : 0
    }

    /// One device pixel or the nearest whole number of them, in logical pixels.
    function hairlineWidth(devicePixelRatio: real): real {
        return Math.max(1, Math.round(devicePixelRatio)) / devicePixelRatio
    }
}
