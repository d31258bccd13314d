// SPDX-License-Identifier: MIT
import QtQuick

// A rounded rectangle filled with a leading-to-trailing gradient. A plain Rectangle rather than
// a Shape: the shape renderer of Qt 6.4 crashed now and then when redrawn under load, and on
// the wide capsules this fills a horizontal gradient reads the same as a diagonal one.
Rectangle {
    id: rect
    property color startColor
    property color endColor

    antialiasing: true
    Accessible.ignored: true
    gradient: Gradient {
        orientation: Gradient.Horizontal
        GradientStop { position: 0; color: rect.startColor }
        GradientStop { position: 1; color: rect.endColor }
    }
}
