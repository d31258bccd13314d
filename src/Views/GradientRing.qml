// SPDX-License-Identifier: MIT
import QtQuick

// A rounded rectangle's outline stroked inside with a top-leading to bottom-trailing gradient.
Canvas {
    id: ring
    property color startColor
    property color endColor
    property real radius: 0
    property real lineWidth: 2

    onStartColorChanged: requestPaint()
    onEndColorChanged: requestPaint()
    onWidthChanged: requestPaint()
    onHeightChanged: requestPaint()
    Accessible.ignored: true

    onPaint: {
        const ctx = getContext("2d")
        ctx.reset()
        const inset = lineWidth / 2
        const w = width - lineWidth
        const h = height - lineWidth
        const r = Math.min(radius - inset, w / 2, h / 2)
        const gradient = ctx.createLinearGradient(0, 0, width, height)
        gradient.addColorStop(0, startColor)
        gradient.addColorStop(1, endColor)
        ctx.strokeStyle = gradient
        ctx.lineWidth = lineWidth
        ctx.beginPath()
        ctx.roundedRect(inset, inset, w, h, r, r)
        ctx.stroke()
    }
}
