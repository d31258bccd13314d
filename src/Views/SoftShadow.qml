// SPDX-License-Identifier: MIT
import QtQuick

// The soft shadow of a rounded rectangle the size of `target`, placed under it. Declare it
// before the target, in the same parent.
Image {
    property Item target
    property real radius: 0
    property int blur: 20
    property color color: Qt.rgba(0, 0, 0, 0.08)
    property int dx: 0
    property int dy: 0

    readonly property int marginX: blur + Math.abs(dx)
    readonly property int marginY: blur + Math.abs(dy)
    x: target ? target.x - marginX : 0
    y: target ? target.y - marginY : 0
    visible: target !== null && target.visible && color.a > 0
    opacity: target ? target.opacity : 1
    cache: true
    smooth: false
    source: !target || target.width < 1 || target.height < 1 ? ""
        : "image://shadow/" + [Math.round(target.width), Math.round(target.height),
                               Math.round(radius), blur, Theme.hex(color), dx, dy].join(",")
    Accessible.ignored: true
}
