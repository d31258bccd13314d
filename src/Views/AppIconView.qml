// SPDX-License-Identifier: MIT
import QtQuick
import Quenzo

// An app's icon at a given size (its corners are cut to the rounded square when it is read), or
// an opaque placeholder with the app symbol when it has no icon or the bytes do not decode.
Item {
    id: iconView
    property string iconSource
    property real size: 72
    readonly property real cornerRadius: size * 0.22
    readonly property bool showsImage: iconSource !== "" && image.status === Image.Ready

    width: size
    height: size
    Accessible.ignored: true

    SoftShadow {
        target: frame
        radius: iconView.cornerRadius
        blur: Math.max(1, Math.round(iconView.size * 0.11))
        dy: Math.round(iconView.size * 0.055)
        color: Qt.rgba(0, 0, 0, 0.15)
    }

    Item {
        id: frame
        anchors.fill: parent

        Image {
            id: image
            objectName: "appIconImage"
            anchors.fill: parent
            source: iconView.iconSource
            sourceSize: Qt.size(iconView.size * 2, iconView.size * 2)
            fillMode: Image.PreserveAspectFit
            smooth: true
            mipmap: true
            visible: iconView.showsImage
        }
        Rectangle {
            anchors.fill: parent
            radius: iconView.cornerRadius
            color: "transparent"
            border.color: Qt.rgba(1, 1, 1, 0.3)
            border.width: 1
            visible: iconView.showsImage
        }
        Rectangle {
            objectName: "appIconPlaceholder"
            anchors.fill: parent
            radius: iconView.cornerRadius
            visible: !iconView.showsImage
            color: Theme.controlBackground
            border.color: Theme.controlEdge
            SymbolImage {
                anchors.centerIn: parent
                symbol: "app.fill"
                color: Theme.blue
                size: iconView.size * 0.5
            }
        }
    }
}
