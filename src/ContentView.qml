// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls

ApplicationWindow {
    id: window
    required property var viewModel

    width: 600
    height: 550
    minimumWidth: 600
    maximumWidth: 600
    minimumHeight: 550
    maximumHeight: 550
    visible: true
    title: "Quenzo"

    Label {
        anchors.centerIn: parent
        text: "Drop apps here to quenz them"
    }
}
