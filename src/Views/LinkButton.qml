// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls

// A plain-styled text button ("All", "None", "Allow").
Button {
    id: button
    property color textColor: Theme.blue
    property int fontSize: Theme.caption
    padding: 2
    leftPadding: 4
    rightPadding: 4
    focusPolicy: Qt.StrongFocus
    Accessible.name: text
    contentItem: Text {
        text: button.text
        color: button.textColor
        opacity: button.down ? 0.6 : 1
        font.family: Theme.fontFamily
        font.pixelSize: button.fontSize
        font.weight: Font.Medium
    }
    background: Rectangle {
        radius: 4
        color: button.hovered ? Qt.rgba(0, 0.48, 1, 0.08) : "transparent"
        border.color: Qt.rgba(0, 0.48, 1, 0.55)
        border.width: button.visualFocus ? 2 : 0
    }
}
