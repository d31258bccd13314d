// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quenzo

// After the uninstall: the outcome, what each app lost, and the way to the log and the Trash.
Item {
    id: summary
    required property ResultsPresenter presenter
    required property MainViewModel viewModel
    signal viewLogsClicked()

    readonly property color tone: presenter.hasFailures ? Theme.orange : Theme.green

    ColumnLayout {
        anchors.centerIn: parent
        width: parent.width
        spacing: 18

        Rectangle {
            Layout.alignment: Qt.AlignHCenter
            implicitWidth: 80
            implicitHeight: 80
            radius: 40
            color: Qt.rgba(summary.tone.r, summary.tone.g, summary.tone.b, 0.1)
            SymbolImage {
                objectName: "outcomeSymbol"
                anchors.centerIn: parent
                symbol: summary.presenter.hasFailures ? "exclamationmark.circle.fill"
                                                      : "checkmark.circle.fill"
                color: summary.tone
                size: 48
            }
        }

        ColumnLayout {
            Layout.alignment: Qt.AlignHCenter
            spacing: 6
            Text {
                objectName: "outcomeHeadline"
                Layout.alignment: Qt.AlignHCenter
                text: summary.presenter.hasFailures ? "Finished with Some Errors" : "Uninstall Complete"
                color: Theme.primaryText
                font.family: Theme.fontFamily
                font.pixelSize: Theme.title2
                font.weight: Font.DemiBold
            }
            Text {
                objectName: "outcomeSubline"
                Layout.alignment: Qt.AlignHCenter
                text: summary.presenter.hasFailures
                      ? "Some files couldn't be removed. Check the logs for details."
                      : "Files moved to Trash can be restored from Finder if needed."
                horizontalAlignment: Text.AlignHCenter
                color: Theme.secondaryText
                font.family: Theme.fontFamily
                font.pixelSize: Theme.callout
            }
        }

        MaterialRect {
            objectName: "completedSummary"
            Layout.fillWidth: true
            Layout.leftMargin: 40
            Layout.rightMargin: 40
            implicitHeight: Math.min(150, rows.implicitHeight)
            radius: 12
            color: Qt.rgba(1, 1, 1, 0.62)
            clip: true
            Flickable {
                id: scroller
                objectName: "summaryScroller"
                anchors.fill: parent
                contentHeight: rows.implicitHeight
                boundsBehavior: Flickable.StopAtBounds
                ScrollBar.vertical: ScrollBar { policy: ScrollBar.AsNeeded }
                Column {
                    id: rows
                    width: scroller.width
                    Repeater {
                        model: summary.presenter.summaryRows
                        Column {
                            id: summaryRow
                            required property var modelData
                            required property int index
                            width: rows.width
                            RowLayout {
                                objectName: "summaryRow"
                                width: parent.width
                                spacing: 12
                                Item { implicitWidth: 4 }
                                AppIconView {
                                    Layout.topMargin: 10
                                    Layout.bottomMargin: 10
                                    iconSource: summaryRow.modelData.iconSource
                                    size: 28
                                }
                                Text {
                                    Layout.fillWidth: true
                                    text: summaryRow.modelData.name
                                    elide: Text.ElideRight
                                    color: Theme.primaryText
                                    font.family: Theme.fontFamily
                                    font.pixelSize: 14
                                    font.weight: Font.Medium
                                }
                                ColumnLayout {
                                    spacing: 2
                                    Text {
                                        objectName: "removedText"
                                        Layout.alignment: Qt.AlignRight
                                        text: summaryRow.modelData.removedText
                                        color: Theme.secondaryText
                                        font.family: Theme.fontFamily
                                        font.pixelSize: 13
                                    }
                                    Text {
                                        objectName: "failedText"
                                        Layout.alignment: Qt.AlignRight
                                        visible: text !== ""
                                        text: summaryRow.modelData.failedText
                                        color: Theme.red
                                        font.family: Theme.fontFamily
                                        font.pixelSize: Theme.caption
                                    }
                                }
                                Item { implicitWidth: 4 }
                            }
                            Rectangle {
                                objectName: "summaryDivider"
                                visible: summaryRow.index < summary.presenter.summaryRows.length - 1
                                x: 16
                                width: parent.width - 32
                                height: 1
                                color: Theme.hairline
                            }
                        }
                    }
                }
            }
        }

        RowLayout {
            Layout.alignment: Qt.AlignHCenter
            spacing: 12
            CapsuleButton {
                objectName: "viewLogsButton"
                text: "View Logs"
                symbol: "list.bullet.rectangle"
                fontSize: 13
                padY: 6
                onClicked: summary.viewLogsClicked()
            }
            CapsuleButton {
                objectName: "openTrashButton"
                text: "Open Trash"
                symbol: "trash"
                fontSize: 13
                padY: 6
                onClicked: summary.viewModel.openTrash()
            }
        }
    }
}
