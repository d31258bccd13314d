// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import Quenzo

// The one window: fixed at 600 × 550, titled "Quenzo".
ApplicationWindow {
    id: window
    required property MainViewModel viewModel

    width: 600
    height: 550
    minimumWidth: 600
    maximumWidth: 600
    minimumHeight: 550
    maximumHeight: 550
    visible: true
    title: "Quenzo"
    color: Theme.windowBackground

    MainView {
        objectName: "mainView"
        anchors.fill: parent
        viewModel: window.viewModel
    }
}
