// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// A modal alert: title, message, a cancel button and optionally a destructive action. Escape
// cancels, Return takes the action (or the cancel button when there is none).
Dialog {
    id: alert
    property string message
    property string cancelText: "Cancel"
    property string actionText: ""
    signal actionTriggered()

    modal: true
    focus: true
    anchors.centerIn: Overlay.overlay
    width: 300
    padding: 20
    closePolicy: Popup.CloseOnEscape

    Overlay.modal: Rectangle { color: Qt.rgba(0, 0, 0, 0.18) }

    enter: Transition {
        NumberAnimation { property: "scale"; from: 1.08; to: 1; duration: 160; easing.type: Easing.OutCubic }
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: 120 }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: 100 }
    }

    function takeAction() {
        close()
        actionTriggered()
    }

    background: Item {
        SoftShadow {
            target: panel
            radius: 14
            blur: 24
            dy: 10
            color: Qt.rgba(0, 0, 0, 0.22)
        }
        Rectangle {
            id: panel
            anchors.fill: parent
            radius: 14
            color: "#f8f9fb"
            border.color: Theme.hairline
        }
    }
    header: Item {}
    footer: Item {}

    contentItem: ColumnLayout {
        spacing: 10
        Keys.onReturnPressed: alert.actionText !== "" ? alert.takeAction() : alert.close()
        Keys.onEnterPressed: alert.actionText !== "" ? alert.takeAction() : alert.close()

        GradientRect {
            Layout.alignment: Qt.AlignHCenter
            implicitWidth: 52
            implicitHeight: 52
            radius: 13
            startColor: Theme.blue
            endColor: Theme.cyan
            SymbolImage {
                anchors.centerIn: parent
                symbol: "trash"
                color: "white"
                size: 28
            }
        }
        Text {
            objectName: "alertTitle"
            Layout.fillWidth: true
            text: alert.title
            horizontalAlignment: Text.AlignHCenter
            color: Theme.primaryText
            font.family: Theme.fontFamily
            font.pixelSize: 14
            font.weight: Font.Bold
        }
        Text {
            objectName: "alertMessage"
            Layout.fillWidth: true
            text: alert.message
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            color: Theme.primaryText
            font.family: Theme.fontFamily
            font.pixelSize: 12
            lineHeight: 1.1
        }
        RowLayout {
            Layout.fillWidth: true
            Layout.topMargin: 8
            spacing: 10
            CapsuleButton {
                objectName: "alertCancelButton"
                Layout.fillWidth: true
                text: alert.cancelText
                fontSize: 13
                padY: 7
                focus: alert.actionText === ""
                onClicked: alert.close()
            }
            CapsuleButton {
                objectName: "alertActionButton"
                Layout.fillWidth: true
                visible: alert.actionText !== ""
                text: alert.actionText
                fontSize: 13
                padY: 7
                textColor: "white"
                gradientFill: true
                startColor: Theme.red
                endColor: Theme.orange
                focus: alert.actionText !== ""
                onClicked: alert.takeAction()
            }
        }
    }
}
