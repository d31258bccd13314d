// SPDX-License-Identifier: MIT
import QtQuick

// The ultra-thin material: frosted white with a bright inner edge.
Rectangle {
    color: Theme.material
    border.color: Theme.materialEdge
    border.width: 1
    Accessible.ignored: true
}
