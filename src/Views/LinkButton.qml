// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls

// A plain-styled text button ("All", "None", "Allow").
Button {
    id: button
    property color textColor: Theme.accentText
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
        color: button.hovered ? Qt.rgba(Theme.accent.r, Theme.accent.g, Theme.accent.b, 0.1)
                              : "transparent"
        border.color: Theme.accent
        border.width: button.visualFocus ? 2 : 0
    }
}
