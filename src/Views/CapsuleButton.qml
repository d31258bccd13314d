// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls

// A plain-styled button on a capsule: a neutral fill that stands apart from its surface, or a
// diagonal gradient with a coloured shadow for the primary action. Optional leading symbol.
Button {
    id: button
    property string symbol
    property color textColor: Theme.primaryText
    property color symbolColor: textColor
    property int fontSize: 14
    property int fontWeight: Font.Medium
    property bool gradientFill: false
    property color startColor: Theme.accentFill
    property color endColor: Theme.accentFillEnd
    property real padX: 16
    property real padY: 8
    property real disabledOpacity: 0.5

    leftPadding: padX
    rightPadding: padX
    topPadding: padY
    bottomPadding: padY
    opacity: enabled ? 1 : disabledOpacity
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.name: text

    contentItem: Item {
        implicitWidth: label.implicitWidth
        implicitHeight: label.implicitHeight
        Row {
            id: label
            anchors.centerIn: parent
            spacing: 6
            SymbolImage {
                visible: button.symbol !== ""
                anchors.verticalCenter: parent.verticalCenter
                symbol: button.symbol
                color: button.symbolColor
                size: button.fontSize
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: button.text
                color: button.textColor
                font.family: Theme.fontFamily
                font.pixelSize: button.fontSize
                font.weight: button.fontWeight
            }
        }
    }

    background: Item {
        implicitHeight: button.fontSize + 2 * button.padY
        SoftShadow {
            target: fill
            radius: fill.radius
            visible: button.gradientFill
            blur: 8
            dy: 4
            color: Qt.rgba(button.startColor.r, button.startColor.g, button.startColor.b, 0.3)
        }
        GradientRect {
            id: fill
            anchors.fill: parent
            visible: button.gradientFill
            radius: height / 2
            startColor: button.down ? Qt.darker(button.startColor, 1.1) : button.startColor
            endColor: button.down ? Qt.darker(button.endColor, 1.1) : button.endColor
        }
        Rectangle {
            anchors.fill: parent
            visible: !button.gradientFill
            radius: height / 2
            color: button.down ? Qt.darker(Theme.controlBackground, 1.08)
                 : button.hovered ? Qt.lighter(Theme.controlBackground, 1.04)
                 : Theme.controlBackground
            border.color: Theme.controlEdge
            border.width: 1
        }
        // Keyboard focus ring.
        Rectangle {
            anchors.fill: parent
            anchors.margins: -3
            radius: height / 2
            color: "transparent"
            border.color: Theme.accent
            border.width: 2.5
            visible: button.visualFocus
        }
    }
}
