// SPDX-License-Identifier: MIT
import QtQuick

// A rounded rectangle filled with a top-leading to bottom-trailing gradient. Painted on a
// Canvas rather than a Shape: the shape renderer of Qt 6.4 crashed now and then when redrawn
// under load, and a Rectangle's gradient runs only along one axis.
Canvas {
    id: rect
    property color startColor
    property color endColor
    property real radius: 0
    Accessible.ignored: true
    onStartColorChanged: requestPaint()
    onEndColorChanged: requestPaint()
    onRadiusChanged: requestPaint()
    onWidthChanged: requestPaint()
    onHeightChanged: requestPaint()
    onPaint: {
        const ctx = getContext("2d")
        ctx.reset()
        const gradient = ctx.createLinearGradient(0, 0, width, height)
        gradient.addColorStop(0, startColor)
        gradient.addColorStop(1, endColor)
        ctx.fillStyle = gradient
        const r = Math.min(radius, width / 2, height / 2)
        ctx.beginPath()
        ctx.roundedRect(0, 0, width, height, r, r)
        ctx.fill()
    }
}
