// SPDX-License-Identifier: MIT
import QtQuick

// Shown over the results while a drag hovers: a dashed blue frame and what a drop will do.
Item {
    id: overlay
    property string text

    Rectangle {
        anchors.fill: parent
        anchors.margins: 8
        radius: 20
        color: Qt.rgba(0, 0.48, 1, 0.08)
    }
    Canvas {
        id: dashes
        anchors.fill: parent
        anchors.margins: 8
        onWidthChanged: requestPaint()
        onHeightChanged: requestPaint()
        onPaint: {
            const ctx = getContext("2d")
            ctx.reset()
            ctx.strokeStyle = Qt.rgba(0, 0.48, 1, 0.6)
            ctx.lineWidth = 3
            ctx.setLineDash([10 / 3, 6 / 3])
            ctx.beginPath()
            ctx.roundedRect(1.5, 1.5, width - 3, height - 3, 18.5, 18.5)
            ctx.stroke()
        }
    }
    MaterialRect {
        anchors.centerIn: parent
        width: label.width + 40
        height: label.height + 24
        radius: height / 2
        Row {
            id: label
            anchors.centerIn: parent
            spacing: 8
            SymbolImage {
                anchors.verticalCenter: parent.verticalCenter
                symbol: "plus.circle.fill"
                color: Theme.blue
                size: 18
            }
            Text {
                objectName: "dropOverlayText"
                anchors.verticalCenter: parent.verticalCenter
                text: overlay.text
                color: Theme.accentText
                font.family: Theme.fontFamily
                font.pixelSize: 16
                font.weight: Font.DemiBold
            }
        }
    }
}
