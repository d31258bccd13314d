// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quenzo

// After the uninstall: the outcome, what each app lost, and the way to the log and the Trash.
// The per-app list takes the height that is left and scrolls, with a visible scroll bar and a
// fade at its lower edge while more rows lie below, so the buttons under it always stay shown.
Item {
    id: summary
    required property ResultsPresenter presenter
    required property MainViewModel viewModel
    signal viewLogsClicked()
    signal putBackClicked()

    readonly property color tone: presenter.hasFailures ? Theme.orange : Theme.green

    ColumnLayout {
        anchors.fill: parent
        anchors.topMargin: 16
        anchors.bottomMargin: 16
        spacing: 14

        Item { Layout.fillHeight: true; Layout.minimumHeight: 0 }
        Rectangle {
            Layout.alignment: Qt.AlignHCenter
            implicitWidth: 64
            implicitHeight: 64
            radius: 32
            color: Qt.rgba(summary.tone.r, summary.tone.g, summary.tone.b, 0.14)
            SymbolImage {
                objectName: "outcomeSymbol"
                anchors.centerIn: parent
                symbol: summary.presenter.outcomeSymbol
                color: summary.tone
                size: 40
            }
        }
        ColumnLayout {
            Layout.alignment: Qt.AlignHCenter
            Layout.leftMargin: 40
            Layout.rightMargin: 40
            spacing: 6
            Text {
                objectName: "outcomeHeadline"
                Layout.alignment: Qt.AlignHCenter
                text: summary.presenter.outcomeHeadline
                color: Theme.primaryText
                font.family: Theme.fontFamily
                font.pixelSize: Theme.title2
                font.weight: Font.DemiBold
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            Text {
                objectName: "outcomeSubline"
                Layout.alignment: Qt.AlignHCenter
                Layout.fillWidth: true
                text: summary.presenter.outcomeSubline
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.WordWrap
                color: Theme.secondaryText
                font.family: Theme.fontFamily
                font.pixelSize: Theme.callout
            }
        }
        Rectangle {
            objectName: "completedSummary"
            Layout.fillWidth: true
            Layout.leftMargin: 40
            Layout.rightMargin: 40
            Layout.preferredHeight: rows.contentHeight
            Layout.maximumHeight: rows.contentHeight
            Layout.minimumHeight: Math.min(rows.contentHeight, 48)
            Layout.fillHeight: true
            radius: 12
            color: Theme.rowBackground
            border.color: Theme.hairline
            clip: true

            ListView {
                id: rows
                objectName: "summaryScroller"
                anchors.fill: parent
                model: summary.presenter.summaryModel
                boundsBehavior: Flickable.StopAtBounds
                readonly property bool overflows: contentHeight > height + 1
                ScrollBar.vertical: ScrollBar {
                    objectName: "summaryScrollBar"
                    policy: rows.overflows ? ScrollBar.AlwaysOn : ScrollBar.AsNeeded
                }
                delegate: Column {
                    id: summaryRow
                    required property string name
                    required property string iconSource
                    required property string removedText
                    required property string failedText
                    required property bool isLast
                    width: ListView.view.width
                    Accessible.role: Accessible.ListItem
                    Accessible.name: name
                    Accessible.description: failedText === "" ? removedText
                                                              : removedText + ", " + failedText
                    RowLayout {
                        objectName: "summaryRow"
                        width: parent.width
                        spacing: 12
                        Item { implicitWidth: 4 }
                        AppIconView {
                            Layout.topMargin: 8
                            Layout.bottomMargin: 8
                            iconSource: summaryRow.iconSource
                            size: 28
                        }
                        Text {
                            Layout.fillWidth: true
                            text: summaryRow.name
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
                                text: summaryRow.removedText
                                color: Theme.secondaryText
                                font.family: Theme.fontFamily
                                font.pixelSize: 13
                            }
                            Text {
                                objectName: "failedText"
                                Layout.alignment: Qt.AlignRight
                                visible: text !== ""
                                text: summaryRow.failedText
                                color: Theme.errorText
                                font.family: Theme.fontFamily
                                font.pixelSize: Theme.caption
                            }
                        }
                        Item { implicitWidth: 12 }
                    }
                    Rectangle {
                        objectName: "summaryDivider"
                        visible: !summaryRow.isLast
                        x: 16
                        width: parent.width - 32
                        height: 1
                        color: Theme.hairline
                    }
                }
            }
            // More rows lie below: the lower edge fades out.
            Rectangle {
                objectName: "summaryMoreHint"
                visible: rows.overflows && !rows.atYEnd
                anchors.left: parent.left
                anchors.right: parent.right
                anchors.bottom: parent.bottom
                anchors.margins: 1
                height: 28
                radius: 12
                gradient: Gradient {
                    GradientStop { position: 0; color: "transparent" }
                    GradientStop { position: 1; color: Theme.rowBackground }
                }
            }
        }
        RowLayout {
            Layout.alignment: Qt.AlignHCenter
            spacing: 12
            CapsuleButton {
                objectName: "putBackButton"
                visible: summary.presenter.canPutBack
                text: "Put Back"
                symbol: "arrow.clockwise.circle.fill"
                fontSize: 13
                padY: 6
                Accessible.description: "Move everything this uninstall moved back to where it was"
                onClicked: summary.putBackClicked()
            }
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
        Item { Layout.fillHeight: true; Layout.minimumHeight: 0 }
    }
}
