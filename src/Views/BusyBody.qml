// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls

// A large progress indicator with what is going on ("Scanning for files...").
Item {
    id: busy
    property string title
    property string subtitle

    Column {
        anchors.centerIn: parent
        spacing: 20
        Spinner {
            anchors.horizontalCenter: parent.horizontalCenter
            size: 32 * 1.2
        }
        Column {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 6
            Text {
                objectName: "busyTitle"
                anchors.horizontalCenter: parent.horizontalCenter
                text: busy.title
                color: Theme.primaryText
                font.family: Theme.fontFamily
                font.pixelSize: Theme.headline
                font.weight: Font.DemiBold
            }
            Text {
                objectName: "busySubtitle"
                anchors.horizontalCenter: parent.horizontalCenter
                text: busy.subtitle
                color: Theme.secondaryText
                font.family: Theme.fontFamily
                font.pixelSize: Theme.subheadline
            }
        }
    }
}
