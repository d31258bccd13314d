// SPDX-License-Identifier: MIT
import QtQuick

// The platform-style activity indicator: twelve fading spokes turning in steps.
Item {
    id: spinner
    property real size: 16
    width: size
    height: size
    Accessible.role: Accessible.Animation
    Accessible.name: "In progress"

    Item {
        id: spokes
        anchors.fill: parent
        property int step: 0
        rotation: step * 30
        Repeater {
            model: 12
            Rectangle {
                required property int index
                x: (spinner.size - width) / 2
                y: 0
                width: Math.max(1.5, spinner.size * 0.09)
                height: spinner.size * 0.28
                radius: width / 2
                color: Theme.secondaryText
                opacity: 0.15 + 0.85 * ((index + 1) / 12)
                transform: Rotation {
                    origin.x: width / 2
                    origin.y: spinner.size / 2
                    angle: index * 30
                }
            }
        }
        Timer {
            interval: 83
            repeat: true
            running: spinner.visible
            onTriggered: spokes.step = (spokes.step + 1) % 12
        }
    }
}
