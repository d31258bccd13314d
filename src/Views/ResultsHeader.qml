// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quenzo

// The head of the results: the app (or the batch), the Logs button, and the banners.
ColumnLayout {
    id: header
    required property ResultsPresenter presenter
    required property MainViewModel viewModel
    signal logsClicked()
    signal addAppClicked()
    spacing: 0

    Item {
        Layout.fillWidth: true
        implicitHeight: mainRow.implicitHeight + 48
        MaterialRect {
            anchors.fill: parent
            anchors.margins: -1
            anchors.bottomMargin: 0
            color: Theme.material
        }
        RowLayout {
            id: mainRow
            anchors.fill: parent
            anchors.margins: 24
            spacing: 20

            AppIconView {
                objectName: "headerIcon"
                visible: header.presenter.isSingleSession
                iconSource: header.presenter.headerIcons.length > 0 ? header.presenter.headerIcons[0] : ""
                size: 72
            }
            Row {
                objectName: "headerIcons"
                visible: !header.presenter.isSingleSession
                spacing: -12
                Repeater {
                    model: header.presenter.isSingleSession ? [] : header.presenter.headerIcons
                    AppIconView {
                        required property string modelData
                        iconSource: modelData
                        size: 56
                    }
                }
            }
            ColumnLayout {
                Layout.fillWidth: true
                spacing: 6
                Text {
                    objectName: "headerTitle"
                    Layout.fillWidth: true
                    text: header.presenter.headerTitle
                    elide: Text.ElideRight
                    color: Theme.primaryText
                    font.family: Theme.fontFamily
                    font.pixelSize: 22
                    font.weight: Font.DemiBold
                }
                Text {
                    objectName: "headerDetail"
                    Layout.fillWidth: true
                    text: header.presenter.headerDetail
                    color: Theme.secondaryText
                    font.family: Theme.fontFamily
                    font.pixelSize: 13
                    wrapMode: Text.WordWrap
                    maximumLineCount: header.presenter.isSingleSession ? 1 : 2
                    elide: Text.ElideRight
                }
                Text {
                    objectName: "headerVersion"
                    visible: text !== ""
                    text: header.presenter.versionText
                    color: Theme.tertiaryText
                    font.family: Theme.fontFamily
                    font.pixelSize: 11
                }
            }
            CapsuleButton {
                objectName: "addAppButton"
                Layout.alignment: Qt.AlignVCenter
                text: "Add App…"
                symbol: "plus.circle.fill"
                enabled: !header.viewModel.isProcessing
                onClicked: header.addAppClicked()
            }
            CapsuleButton {
                objectName: "logsButton"
                Layout.alignment: Qt.AlignVCenter
                text: "Logs"
                symbol: "list.bullet.rectangle"
                enabled: header.presenter.hasLogs
                onClicked: header.logsClicked()
            }
        }
    }

    // A single system app: it is shown, never removed.
    Item {
        objectName: "protectionBanner"
        visible: header.presenter.isSingleSIPApp
        Layout.fillWidth: true
        implicitHeight: sipBanner.height + 24
        Rectangle {
            id: sipBanner
            x: 24
            y: 12
            width: parent.width - 48
            height: sipRow.implicitHeight + 32
            radius: 12
            color: Qt.rgba(1, 0.58, 0, 0.15)
            RowLayout {
                id: sipRow
                anchors.fill: parent
                anchors.margins: 16
                spacing: 10
                SymbolImage {
                    symbol: "exclamationmark.shield.fill"
                    size: Theme.title3 + 3
                    color: Theme.orange
                    color2: Theme.red
                }
                Text {
                    Layout.fillWidth: true
                    text: "System app protected by SIP - Cannot be uninstalled"
                    color: Theme.primaryText
                    font.family: Theme.fontFamily
                    font.pixelSize: 14
                    font.weight: Font.Medium
                }
            }
        }
    }

    Item {
        objectName: "fullDiskAccessBanner"
        visible: header.presenter.showsFullDiskAccessBanner
        Layout.fillWidth: true
        implicitHeight: fdaRow.implicitHeight + 20
        RowLayout {
            id: fdaRow
            anchors.fill: parent
            anchors.leftMargin: 24
            anchors.rightMargin: 24
            anchors.topMargin: 10
            anchors.bottomMargin: 10
            spacing: 12
            SymbolImage {
                symbol: "lock.shield"
                color: Theme.accent
                size: 14
            }
            Text {
                id: fdaText
                // Two balanced lines rather than one full line and an orphan word.
                readonly property real room: fdaRow.width - 14 - 24 - allowButton.implicitWidth - 24
                Layout.preferredWidth: implicitWidth > room ? Math.ceil(implicitWidth / 2) + 24
                                                            : implicitWidth
                Layout.fillWidth: false
                text: "Some folders are hidden without Full Disk Access, so a few leftovers may be missed."
                color: Theme.secondaryText
                wrapMode: Text.WordWrap
                font.family: Theme.fontFamily
                font.pixelSize: 12
            }
            Item { Layout.fillWidth: true }
            CapsuleButton {
                id: allowButton
                objectName: "allowButton"
                text: "Allow"
                fontSize: 11
                padX: 10
                padY: 3
                textColor: Theme.accentText
                Accessible.name: "Allow Full Disk Access"
                onClicked: header.viewModel.openFullDiskAccessSettings()
            }
        }
    }
}
