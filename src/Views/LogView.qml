// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import QtQuick.Dialogs
import QtQuick.Layouts
import Quenzo

// The activity log as a sheet, 500 × 400: each session's entries, headed by the app's name
// when there are several sessions. Each message can be selected; Copy and Save take the whole
// log as text, every entry with its time and its result in words.
Popup {
    id: sheet
    required property LogListModel logModel

    modal: true
    focus: true
    anchors.centerIn: Overlay.overlay
    width: 500
    height: 400
    padding: 0
    closePolicy: Popup.CloseOnEscape
    Overlay.modal: Rectangle { color: Theme.scrim }

    enter: Transition {
        NumberAnimation { property: "y"; from: -40; duration: 220; easing.type: Easing.OutCubic }
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: 160 }
    }

    background: Item {
        SoftShadow {
            target: panel
            radius: 12
            blur: 28
            dy: 12
            color: Qt.rgba(0, 0, 0, 0.25)
        }
        Rectangle {
            id: panel
            anchors.fill: parent
            radius: 12
            color: Theme.alertBackground
            border.color: Theme.hairline
        }
    }

    contentItem: ColumnLayout {
        spacing: 0
        RowLayout {
            Layout.fillWidth: true
            Layout.margins: 16
            Text {
                objectName: "logTitle"
                text: "Activity Log"
                color: Theme.primaryText
                font.family: Theme.fontFamily
                font.pixelSize: Theme.headline
                font.weight: Font.DemiBold
            }
            Item { Layout.fillWidth: true }
            CapsuleButton {
                objectName: "logCopyButton"
                text: "Copy"
                fontSize: 13
                padX: 14
                padY: 5
                enabled: !sheet.logModel.isEmpty
                Accessible.description: "Copy the whole log as text"
                onClicked: {
                    clipboard.text = sheet.logModel.plainText()
                    clipboard.selectAll()
                    clipboard.copy()
                }
            }
            CapsuleButton {
                objectName: "logSaveButton"
                text: "Save…"
                fontSize: 13
                padX: 14
                padY: 5
                enabled: !sheet.logModel.isEmpty
                Accessible.description: "Save the whole log as a text file"
                onClicked: saveDialog.open()
            }
            CapsuleButton {
                objectName: "logDoneButton"
                text: "Done"
                fontSize: 13
                padX: 14
                padY: 5
                focus: true
                onClicked: sheet.close()
            }
        }
        Rectangle { Layout.fillWidth: true; implicitHeight: 1; color: Theme.hairline }

        Item {
            Layout.fillWidth: true
            Layout.fillHeight: true

            Column {
                objectName: "logPlaceholder"
                anchors.centerIn: parent
                visible: sheet.logModel.isEmpty
                spacing: 8
                SymbolImage {
                    anchors.horizontalCenter: parent.horizontalCenter
                    symbol: "list.bullet.rectangle"
                    color: Theme.tertiaryText
                    size: 44
                    weight: 1.5
                }
                Text {
                    anchors.horizontalCenter: parent.horizontalCenter
                    text: "No Activity Yet"
                    color: Theme.primaryText
                    font.family: Theme.fontFamily
                    font.pixelSize: Theme.title3 + 2
                    font.weight: Font.Bold
                }
                Text {
                    anchors.horizontalCenter: parent.horizontalCenter
                    text: "Activity logs will appear here during the uninstall process"
                    color: Theme.secondaryText
                    font.family: Theme.fontFamily
                    font.pixelSize: Theme.body
                }
            }

            ListView {
                id: entries
                objectName: "logList"
                anchors.fill: parent
                visible: !sheet.logModel.isEmpty
                model: sheet.logModel
                clip: true
                topMargin: 12
                bottomMargin: 12
                leftMargin: 16
                rightMargin: 16
                spacing: 8
                boundsBehavior: Flickable.StopAtBounds
                ScrollBar.vertical: ScrollBar {}
                delegate: Item {
                    id: entry
                    required property bool isHeading
                    required property string message
                    required property bool isSuccess
                    required property string timeText
                    required property string symbol
                    required property string line
                    width: ListView.view.width - 32
                    implicitHeight: isHeading ? heading.implicitHeight + 8 : line.implicitHeight + 8
                    height: implicitHeight

                    Text {
                        id: heading
                        objectName: "logHeading"
                        visible: entry.isHeading
                        y: 8
                        text: entry.message
                        color: Theme.primaryText
                        font.family: Theme.fontFamily
                        font.pixelSize: Theme.headline
                        font.weight: Font.DemiBold
                    }
                    RowLayout {
                        id: line
                        objectName: "logEntry"
                        visible: !entry.isHeading
                        Accessible.role: Accessible.ListItem
                        Accessible.name: entry.line
                        y: 4
                        width: parent.width
                        spacing: 12
                        SymbolImage {
                            Layout.alignment: Qt.AlignTop
                            Layout.topMargin: 1
                            symbol: entry.symbol
                            color: entry.isSuccess ? Theme.successText : Theme.errorText
                            size: Theme.body + 2
                        }
                        ColumnLayout {
                            Layout.fillWidth: true
                            spacing: 4
                            TextEdit {
                                objectName: "logMessage"
                                Layout.fillWidth: true
                                text: entry.message
                                readOnly: true
                                selectByMouse: true
                                selectionColor: Theme.accent
                                selectedTextColor: Theme.textOnAccent
                                wrapMode: TextEdit.WordWrap
                                color: Theme.primaryText
                                font.family: Theme.fontFamily
                                font.pixelSize: Theme.body
                            }
                            Text {
                                text: entry.timeText
                                color: Theme.secondaryText
                                font.family: Theme.fontFamily
                                font.pixelSize: Theme.caption
                            }
                        }
                    }
                }
            }
        }
    }

    // Carries the text to the clipboard: Qt Quick offers no clipboard of its own.
    TextEdit {
        id: clipboard
        visible: false
    }

    FileDialog {
        id: saveDialog
        objectName: "logSaveDialog"
        title: "Save Activity Log"
        fileMode: FileDialog.SaveFile
        defaultSuffix: "txt"
        nameFilters: ["Text (*.txt)"]
        onAccepted: sheet.logModel.saveText(selectedFile)
    }
}
