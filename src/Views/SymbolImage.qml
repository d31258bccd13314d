// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Layouts

// A system symbol by its name ("folder.fill"), drawn from the bundled icons in one colour or a
// diagonal gradient from color to color2.
Image {
    id: symbolImage
    property string symbol
    property color color: Theme.primaryText
    property color color2: "transparent"
    property real size: 16
    property real weight: 2

    width: size
    height: size
    // Layouts go by the implicit size, which an image takes from its (doubled) source size.
    Layout.preferredWidth: size
    Layout.preferredHeight: size
    sourceSize: Qt.size(Math.ceil(size * 2), Math.ceil(size * 2))
    smooth: true
    fillMode: Image.PreserveAspectFit
    source: symbol === "" ? "" : "image://symbol/" + symbol + "?color=" + Theme.hex(color)
                                 + "&weight=" + weight
                                 + (color2.a > 0 ? "&color2=" + Theme.hex(color2) : "")
    Accessible.ignored: true
}
