// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Shapes

// A rounded rectangle filled with a top-leading to bottom-trailing gradient.
Shape {
    id: shape
    property color startColor
    property color endColor
    property real radius: 0

    readonly property real r: Math.min(radius, width / 2, height / 2)
    antialiasing: true
    Accessible.ignored: true

    ShapePath {
        strokeWidth: -1
        strokeColor: "transparent"
        fillGradient: LinearGradient {
            x1: 0; y1: 0
            x2: shape.width; y2: shape.height
            GradientStop { position: 0; color: shape.startColor }
            GradientStop { position: 1; color: shape.endColor }
        }
        startX: shape.r; startY: 0
        PathLine { x: shape.width - shape.r; y: 0 }
        PathArc { x: shape.width; y: shape.r; radiusX: shape.r; radiusY: shape.r }
        PathLine { x: shape.width; y: shape.height - shape.r }
        PathArc { x: shape.width - shape.r; y: shape.height; radiusX: shape.r; radiusY: shape.r }
        PathLine { x: shape.r; y: shape.height }
        PathArc { x: 0; y: shape.height - shape.r; radiusX: shape.r; radiusY: shape.r }
        PathLine { x: 0; y: shape.r }
        PathArc { x: shape.r; y: 0; radiusX: shape.r; radiusY: shape.r }
    }
}
