// SPDX-License-Identifier: MIT
import QtQuick

// A single system app: why it cannot be uninstalled.
Item {
    Column {
        anchors.centerIn: parent
        width: parent.width
        spacing: 24
        Rectangle {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 120
            height: 120
            radius: 60
            color: Qt.rgba(1, 0.58, 0, 0.1)
            SymbolImage {
                anchors.centerIn: parent
                symbol: "exclamationmark.shield.fill"
                color: Theme.orange
                size: 60
                weight: 1.6
            }
        }
        Column {
            width: parent.width
            spacing: 12
            Text {
                objectName: "protectedTitle"
                anchors.horizontalCenter: parent.horizontalCenter
                text: "Cannot Uninstall System App"
                color: Theme.primaryText
                font.family: Theme.fontFamily
                font.pixelSize: Theme.title2
                font.weight: Font.DemiBold
            }
            Column {
                width: parent.width
                spacing: 8
                Text {
                    anchors.horizontalCenter: parent.horizontalCenter
                    text: "This app is protected by macOS System Integrity Protection (SIP)"
                    color: Theme.secondaryText
                    font.family: Theme.fontFamily
                    font.pixelSize: Theme.body
                }
                Text {
                    x: 40
                    width: parent.width - 80
                    text: "System apps cannot be uninstalled as they are essential for macOS to function properly. Attempting to remove them may cause system instability."
                    horizontalAlignment: Text.AlignHCenter
                    wrapMode: Text.WordWrap
                    color: Theme.secondaryText
                    font.family: Theme.fontFamily
                    font.pixelSize: Theme.callout
                }
            }
        }
    }
}
