// SPDX-License-Identifier: MIT
pragma Singleton
import QtQuick

// Colours, type sizes and surfaces shared by every view. The appearance follows the platform
// palette (on macOS the system appearance and accent colour, elsewhere Qt's palette): light or
// dark from the window colour's lightness, text and surfaces from the palette, the accent from
// its highlight. Every colour that text is drawn in is moved, when needed, until it stands
// out at least 4.5:1 from each surface it is drawn on; contrastPairs lists those pairings.
QtObject {
    id: theme

    readonly property SystemPalette system: SystemPalette { colorGroup: SystemPalette.Active }
    readonly property bool dark: system.window.hslLightness < 0.5

    // Surfaces.
    readonly property color windowBackground: system.window
    readonly property color underPageBackground: dark ? Qt.darker(system.window, 1.3)
                                                      : Qt.darker(system.window, 1.07)
    readonly property color rowBackground: system.base
    readonly property color alertBackground: dark ? Qt.lighter(system.window, 1.35) : system.base
    // A neutral button: a solid fill that stands apart from every surface it sits on.
    readonly property color controlBackground: dark ? Qt.lighter(system.window, 1.9)
                                                    : Qt.darker(system.window, 1.1)
    readonly property color controlEdge: dark ? Qt.rgba(1, 1, 1, 0.16) : Qt.rgba(0, 0, 0, 0.14)
    // The ultra-thin material: a frosted layer that lets the backdrop through.
    readonly property color material: dark ? Qt.rgba(1, 1, 1, 0.07) : Qt.rgba(1, 1, 1, 0.58)
    readonly property color materialEdge: dark ? Qt.rgba(1, 1, 1, 0.12) : Qt.rgba(1, 1, 1, 0.9)
    readonly property color hairline: dark ? Qt.rgba(1, 1, 1, 0.12) : Qt.rgba(0, 0, 0, 0.08)
    readonly property color scrim: Qt.rgba(0, 0, 0, dark ? 0.45 : 0.18)
    readonly property color shadow: Qt.rgba(0, 0, 0, dark ? 0.5 : 0.12)
    // The surfaces text is drawn on; the material counted as it looks over the window.
    readonly property var textSurfaces: [windowBackground, underPageBackground, rowBackground,
        alertBackground, controlBackground, over(material, windowBackground),
        over(material, underPageBackground)]

    // Fills for symbols, rings and gradients: the accent and the system's hues.
    readonly property color accent: system.highlight
    readonly property color blue: accent
    readonly property color cyan: dark ? "#64d2ff" : "#32ade6"
    readonly property color orange: dark ? "#ff9f0a" : "#ff9500"
    readonly property color red: dark ? "#ff453a" : "#ff3b30"
    readonly property color green: dark ? "#30d158" : "#34c759"
    readonly property color grey: "#8e8e93"

    // Text.
    readonly property color primaryText: readable(system.windowText, textSurfaces, dark)
    readonly property color secondaryText: readable(mix(system.windowText, system.window, 0.35),
                                                    textSurfaces, dark)
    readonly property color tertiaryText: readable(mix(system.windowText, system.window, 0.45),
                                                   textSurfaces, dark)
    readonly property color accentText: readable(accent, textSurfaces, dark)
    readonly property color warningText: readable(orange, textSurfaces, dark)
    readonly property color errorText: readable(red, textSurfaces, dark)
    readonly property color successText: readable(green, textSurfaces, dark)
    // The fills behind white text (primary and destructive buttons, the alert's badge).
    readonly property color textOnAccent: "white"
    readonly property color accentFill: readableBehind(textOnAccent, accent)
    readonly property color accentFillEnd: readableBehind(textOnAccent, cyan)
    readonly property color destructiveFill: readableBehind(textOnAccent, red)
    readonly property color destructiveFillEnd: readableBehind(textOnAccent, orange)

    // Every pairing of a text colour with a surface it is drawn on, for the contrast check.
    readonly property var contrastPairs: {
        const pairs = []
        const texts = {primaryText, secondaryText, tertiaryText, accentText, warningText,
                       errorText, successText}
        for (const name in texts)
            for (let i = 0; i < textSurfaces.length; ++i)
                pairs.push({name: name + " on surface " + i, text: texts[name],
                            background: textSurfaces[i], large: false})
        for (const fill of ["accentFill", "accentFillEnd", "destructiveFill", "destructiveFillEnd"])
            pairs.push({name: "textOnAccent on " + fill, text: textOnAccent, background: theme[fill],
                        large: false})
        return pairs
    }

    readonly property string fontFamily: Qt.application.font.family
    readonly property int body: 13
    readonly property int headline: 13
    readonly property int callout: 12
    readonly property int subheadline: 11
    readonly property int caption: 11
    readonly property int title2: 17
    readonly property int title3: 15

    // A colour as the bare hex digits the image providers take (AARRGGBB or RRGGBB).
    function hex(color) {
        return String(color).substring(1)
    }

    function mix(a, b, amount) {
        return Qt.rgba(a.r + (b.r - a.r) * amount, a.g + (b.g - a.g) * amount,
                       a.b + (b.b - a.b) * amount, 1)
    }

    // A translucent colour as it looks over an opaque one.
    function over(top, below) {
        return Qt.rgba(top.r * top.a + below.r * (1 - top.a), top.g * top.a + below.g * (1 - top.a),
                       top.b * top.a + below.b * (1 - top.a), 1)
    }

    function luminance(c) {
        const channel = v => v <= 0.03928 ? v / 12.92 : Math.pow((v + 0.055) / 1.055, 2.4)
        return 0.2126 * channel(c.r) + 0.7152 * channel(c.g) + 0.0722 * channel(c.b)
    }

    // The WCAG contrast ratio of two opaque colours, 1 to 21.
    function contrast(a, b) {
        const la = luminance(a)
        const lb = luminance(b)
        return (Math.max(la, lb) + 0.05) / (Math.min(la, lb) + 0.05)
    }

    // `color`, darkened (or lightened, on a dark appearance) until it reaches 4.5:1 against
    // every surface.
    function readable(color, surfaces, lighten) {
        let c = Qt.rgba(color.r, color.g, color.b, 1)
        for (let step = 0; step < 40; ++step) {
            if (surfaces.every(s => contrast(c, s) >= 4.6))
                break
            c = mix(c, lighten ? Qt.rgba(1, 1, 1, 1) : Qt.rgba(0, 0, 0, 1), 0.08)
        }
        return c
    }

    // `fill` darkened until `text` on it reaches 4.5:1.
    function readableBehind(text, fill) {
        let c = Qt.rgba(fill.r, fill.g, fill.b, 1)
        for (let step = 0; step < 40 && contrast(text, c) < 4.6; ++step)
            c = mix(c, Qt.rgba(0, 0, 0, 1), 0.06)
        return c
    }
}
