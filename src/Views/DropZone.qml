// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import Quenzo

// The first screen: the card to drop apps on, and the hint to allow Full Disk Access.
Item {
    id: dropZone
    required property MainViewModel viewModel
    property bool isTargeted: false
    signal addAppClicked()
    signal historyClicked()

    // Response 0.4 s, damping fraction 0.7.
    component Spring: SpringAnimation {
        spring: 4.5
        damping: 0.32
        epsilon: 0.0005
    }

    WindowBackground {}

    Column {
        anchors.centerIn: parent
        spacing: 36

        Item {
            id: cardArea
            anchors.horizontalCenter: parent.horizontalCenter
            width: card.width
            height: card.height
            scale: dropZone.isTargeted ? 1.02 : 1.0
            Behavior on scale { Spring {} }
            Accessible.role: Accessible.Grouping
            Accessible.name: "Drop zone"
            Accessible.description: "Drag Apps Here to Uninstall. Drop one or several apps to remove them and all their files, or choose Add App."

            SoftShadow {
                target: card
                radius: 28
                blur: 30
                dy: 15
                color: Qt.rgba(0, 0, 0, 0.08)
            }
            MaterialRect {
                id: card
                objectName: "dropCard"
                width: cardContent.width + 80
                height: cardContent.height + 80
                radius: 28
            }
            GradientRing {
                anchors.fill: card
                radius: 28
                startColor: dropZone.isTargeted ? Qt.rgba(0, 0.48, 1, 0.5) : "transparent"
                endColor: dropZone.isTargeted ? Qt.rgba(0.2, 0.68, 0.9, 0.3) : "transparent"
            }

            Column {
                id: cardContent
                anchors.centerIn: card
                spacing: 24

                Item {
                    id: icon
                    objectName: "dropIcon"
                    anchors.horizontalCenter: parent.horizontalCenter
                    width: 160
                    height: 160
                    scale: dropZone.isTargeted ? 1.08 : 1.0
                    Behavior on scale { Spring {} }

                    SoftShadow {
                        target: circle
                        radius: 80
                        blur: 20
                        dy: 10
                        color: dropZone.isTargeted ? Qt.rgba(0, 0.48, 1, 0.3)
                                                   : Qt.rgba(0, 0, 0, 0.05)
                    }
                    Rectangle {
                        id: circle
                        anchors.fill: parent
                        radius: 80
                        color: Theme.material
                    }
                    GradientRing {
                        anchors.fill: parent
                        radius: 80
                        startColor: dropZone.isTargeted ? Qt.rgba(0, 0.48, 1, 0.6)
                                                        : Qt.rgba(0.56, 0.56, 0.58, 0.1)
                        endColor: dropZone.isTargeted ? Qt.rgba(0.2, 0.68, 0.9, 0.4)
                                                      : "transparent"
                    }
                    SymbolImage {
                        anchors.centerIn: parent
                        symbol: "trash.circle.fill"
                        size: 70
                        weight: 1.1
                        color: dropZone.isTargeted ? Theme.blue : Theme.grey
                        color2: dropZone.isTargeted ? Theme.cyan
                                                    : Qt.rgba(0.56, 0.56, 0.58, 0.7)
                    }
                }

                Column {
                    anchors.horizontalCenter: parent.horizontalCenter
                    spacing: 12
                    Text {
                        objectName: "dropTitle"
                        anchors.horizontalCenter: parent.horizontalCenter
                        text: "Drag Apps Here to Uninstall"
                        color: Theme.primaryText
                        font.family: Theme.fontFamily
                        font.pixelSize: 24
                        font.weight: Font.DemiBold
                    }
                    Text {
                        objectName: "dropSubtitle"
                        anchors.horizontalCenter: parent.horizontalCenter
                        text: "Drop one or several apps to remove them and all their files"
                        color: Theme.secondaryText
                        font.family: Theme.fontFamily
                        font.pixelSize: 15
                    }
                }
            }
        }

        Column {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 14

            CapsuleButton {
                objectName: "addAppButton"
                anchors.horizontalCenter: parent.horizontalCenter
                text: "Add App…"
                symbol: "plus.circle.fill"
                fontSize: 13
                padX: 14
                padY: 7
                focus: true
                Accessible.description: "Choose apps in the Applications folder"
                onClicked: dropZone.addAppClicked()
            }

            Row {
                anchors.horizontalCenter: parent.horizontalCenter
                spacing: 10
                CapsuleButton {
                    objectName: "findLeftoversButton"
                    text: dropZone.viewModel.isFindingLeftovers
                          ? "Searching for Leftovers…" : "Find Leftovers of Deleted Apps"
                    symbol: "tray.fill"
                    fontSize: 13
                    padX: 14
                    padY: 7
                    enabled: !dropZone.viewModel.isFindingLeftovers
                    Accessible.description: "List what apps you already deleted left behind"
                    onClicked: dropZone.viewModel.findLeftovers()
                }
                CapsuleButton {
                    objectName: "historyButton"
                    text: "History"
                    symbol: "clock.fill"
                    fontSize: 13
                    padX: 14
                    padY: 7
                    Accessible.description: "Past uninstalls, to put them back"
                    onClicked: dropZone.historyClicked()
                }
            }

            Spinner {
                objectName: "leftoversSpinner"
                anchors.horizontalCenter: parent.horizontalCenter
                visible: dropZone.viewModel.isFindingLeftovers
                size: 16
            }

            CapsuleButton {
                id: fullDiskAccessButton
                objectName: "fullDiskAccessButton"
                anchors.horizontalCenter: parent.horizontalCenter
                visible: !dropZone.viewModel.hasFullDiskAccess
                text: "Allow Full Disk Access to find every leftover"
                symbol: "lock.shield"
                textColor: Theme.secondaryText
                fontSize: 13
                padX: 14
                padY: 7
                ToolTip.visible: hovered
                ToolTip.delay: 600
                ToolTip.text: "Opens System Settings › Privacy & Security › Full Disk Access"
                Accessible.description: ToolTip.text
                onClicked: dropZone.viewModel.openFullDiskAccessSettings()
            }
        }
    }
}
