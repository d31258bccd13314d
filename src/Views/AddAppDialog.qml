// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quenzo

// "Add App…": the apps of the Applications folder with a tick each, so several can be added
// at once without dragging. Return adds the ticked apps, Escape closes.
Popup {
    id: dialog
    required property MainViewModel viewModel

    modal: true
    focus: true
    anchors.centerIn: Overlay.overlay
    width: 380
    height: 420
    padding: 0
    closePolicy: Popup.CloseOnEscape
    Overlay.modal: Rectangle { color: Theme.scrim }
    onAboutToShow: {
        dialog.picker.reload()
        apps.forceActiveFocus()
    }

    function addChecked() {
        const urls = dialog.picker.checkedUrls()
        close()
        if (urls.length > 0)
            viewModel.handleDroppedFiles(urls)
    }

    readonly property AppPickerModel picker: viewModel.appPicker

    background: Rectangle {
        radius: 12
        color: Theme.alertBackground
        border.color: Theme.hairline
    }

    contentItem: ColumnLayout {
        spacing: 0
        Keys.onReturnPressed: dialog.addChecked()
        Keys.onEnterPressed: dialog.addChecked()
        Accessible.role: Accessible.Dialog
        Accessible.name: "Add App"

        Text {
            Layout.margins: 16
            text: "Add Apps from Applications"
            color: Theme.primaryText
            font.family: Theme.fontFamily
            font.pixelSize: Theme.headline
            font.weight: Font.DemiBold
        }
        Rectangle { Layout.fillWidth: true; implicitHeight: 1; color: Theme.hairline }
        ListView {
            id: apps
            objectName: "appPickerList"
            Layout.fillWidth: true
            Layout.fillHeight: true
            clip: true
            model: picker
            boundsBehavior: Flickable.StopAtBounds
            keyNavigationEnabled: true
            ScrollBar.vertical: ScrollBar {}
            delegate: CheckDelegate {
                id: choice
                required property int index
                required property string name
                required property string folder
                required property bool isChecked
                objectName: "appChoice"
                width: ListView.view.width
                rightPadding: 44
                checked: isChecked
                focusPolicy: Qt.StrongFocus
                Accessible.name: name
                Accessible.description: folder
                onToggled: {
                    dialog.picker.toggle(index)
                    checked = Qt.binding(() => choice.isChecked)
                }
                contentItem: Column {
                    Text {
                        width: choice.availableWidth
                        text: choice.name
                        elide: Text.ElideRight
                        color: Theme.primaryText
                        font.family: Theme.fontFamily
                        font.pixelSize: Theme.body
                    }
                    Text {
                        width: choice.availableWidth
                        text: choice.folder
                        elide: Text.ElideMiddle
                        color: Theme.secondaryText
                        font.family: Theme.fontFamily
                        font.pixelSize: Theme.caption
                    }
                }
                background: Rectangle {
                    color: choice.visualFocus || choice.hovered ? Theme.controlBackground
                                                                : "transparent"
                }
            }
        }
        Rectangle { Layout.fillWidth: true; implicitHeight: 1; color: Theme.hairline }
        RowLayout {
            Layout.fillWidth: true
            Layout.margins: 12
            spacing: 10
            Item { Layout.fillWidth: true }
            CapsuleButton {
                objectName: "appPickerCancel"
                text: "Cancel"
                fontSize: 13
                padY: 6
                onClicked: dialog.close()
            }
            CapsuleButton {
                objectName: "appPickerAdd"
                text: dialog.picker.checkedCount > 1 ? "Add " + dialog.picker.checkedCount + " Apps" : "Add"
                fontSize: 13
                padY: 6
                textColor: Theme.textOnAccent
                gradientFill: true
                enabled: dialog.picker.checkedCount > 0
                onClicked: dialog.addChecked()
            }
        }
    }
}
