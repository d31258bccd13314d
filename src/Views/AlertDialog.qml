// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts

// A modal alert: title, message, a cancel button and optionally a destructive action. The cancel
// button is the default: Escape and Return cancel, and the action is taken only when it is
// chosen on purpose (clicked, or focused with Tab and pressed).
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

    Overlay.modal: Rectangle { color: Theme.scrim }

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
            color: Theme.alertBackground
            border.color: Theme.hairline
        }
    }
    header: Item {}
    footer: Item {}

    contentItem: ColumnLayout {
        spacing: 10
        Accessible.role: Accessible.AlertMessage
        Accessible.name: alert.title
        Accessible.description: alert.message
        Keys.onReturnPressed: actionButton.activeFocus ? alert.takeAction() : alert.close()
        Keys.onEnterPressed: actionButton.activeFocus ? alert.takeAction() : alert.close()

        GradientRect {
            Layout.alignment: Qt.AlignHCenter
            implicitWidth: 52
            implicitHeight: 52
            radius: 13
            startColor: Theme.accentFill
            endColor: Theme.accentFillEnd
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
            wrapMode: Text.WordWrap
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
                focus: true
                onClicked: alert.close()
            }
            CapsuleButton {
                id: actionButton
                objectName: "alertActionButton"
                Layout.fillWidth: true
                visible: alert.actionText !== ""
                text: alert.actionText
                fontSize: 13
                padY: 7
                textColor: Theme.textOnAccent
                gradientFill: true
                startColor: Theme.destructiveFill
                endColor: Theme.destructiveFillEnd
                onClicked: alert.takeAction()
            }
        }
    }
}
