// SPDX-License-Identifier: MIT
pragma Singleton
import QtQuick

// Colours, type sizes and surfaces shared by every view, after the light macOS palette.
QtObject {
    readonly property color blue: "#007aff"
    readonly property color cyan: "#32ade6"
    readonly property color orange: "#ff9500"
    readonly property color red: "#ff3b30"
    readonly property color green: "#34c759"
    readonly property color grey: "#8e8e93"

    readonly property color primaryText: "#1d1d1f"
    readonly property color secondaryText: "#6e6e73"
    readonly property color tertiaryText: "#a1a1a6"

    readonly property color windowBackground: "#f6f7fa"
    readonly property color underPageBackground: "#dfe3eb"
    // The ultra-thin material: a frosted white that lets the backdrop through.
    readonly property color material: Qt.rgba(1, 1, 1, 0.58)
    readonly property color materialEdge: Qt.rgba(1, 1, 1, 0.9)
    readonly property color hairline: Qt.rgba(0, 0, 0, 0.08)
    readonly property color rowBackground: "#fcfcfd"

    readonly property string fontFamily: Qt.application.font.family
    readonly property int body: 13
    readonly property int headline: 13
    readonly property int callout: 12
    readonly property int subheadline: 11
    readonly property int caption: 10
    readonly property int title2: 17
    readonly property int title3: 15

    // A colour as the bare hex digits the image providers take (AARRGGBB or RRGGBB).
    function hex(color) {
        return String(color).substring(1)
    }
}
