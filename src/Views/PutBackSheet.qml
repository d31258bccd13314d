// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quenzo

// Put Back as a sheet, 520 × 440: the past uninstalls with a Put Back for each, and after a
// restore what came back and what stayed in the Trash, and why. Opened on the summary alone
// when the completion screen's Put Back started the restore.
Popup {
    id: sheet
    required property PutBackPresenter presenter
    // Whether the sheet shows the history when no summary is up.
    property bool showsHistory: true

    readonly property bool showsSummary: presenter.state === PutBackPresenter.Restoring
                                         || presenter.state === PutBackPresenter.Restored

    function openHistory() {
        showsHistory = true
        presenter.loadHistory()
        open()
    }
    function openSummary() {
        showsHistory = false
        open()
    }
    // Done on a summary returns to the history, or closes the sheet opened for the summary.
    function done() {
        presenter.dismissSummary()
        if (!showsHistory)
            close()
    }

    modal: true
    focus: true
    anchors.centerIn: Overlay.overlay
    width: Math.min(520, parent ? parent.width - 40 : 520)
    height: Math.min(440, parent ? parent.height - 40 : 440)
    padding: 0
    closePolicy: presenter.isBusy ? Popup.NoAutoClose : Popup.CloseOnEscape
    Overlay.modal: Rectangle { color: Theme.scrim }
    onClosed: presenter.dismissSummary()

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
                objectName: "putBackTitle"
                Layout.fillWidth: true
                text: sheet.showsSummary ? sheet.presenter.headline : "Past Uninstalls"
                elide: Text.ElideRight
                color: Theme.primaryText
                font.family: Theme.fontFamily
                font.pixelSize: Theme.headline
                font.weight: Font.DemiBold
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            Spinner {
                visible: sheet.presenter.isBusy
                size: 16
            }
            CapsuleButton {
                objectName: "putBackDoneButton"
                text: "Done"
                fontSize: 13
                padX: 14
                padY: 5
                focus: true
                enabled: !sheet.presenter.isBusy
                Accessible.description: sheet.showsSummary && sheet.showsHistory
                                        ? "Back to the past uninstalls" : "Close"
                onClicked: sheet.showsSummary ? sheet.done() : sheet.close()
            }
        }
        Rectangle { Layout.fillWidth: true; implicitHeight: 1; color: Theme.hairline }

        Text {
            objectName: "putBackSummary"
            visible: sheet.showsSummary
            Layout.fillWidth: true
            Layout.margins: 16
            text: sheet.presenter.state === PutBackPresenter.Restoring
                  ? "Items are moving back from the Trash to where they were."
                  : sheet.presenter.summary
            wrapMode: Text.WordWrap
            color: Theme.primaryText
            font.family: Theme.fontFamily
            font.pixelSize: Theme.body
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        ListView {
            id: reportList
            objectName: "putBackReport"
            visible: sheet.showsSummary
            Layout.fillWidth: true
            Layout.fillHeight: true
            model: sheet.presenter.reportModel
            clip: true
            leftMargin: 16
            rightMargin: 16
            bottomMargin: 12
            spacing: 6
            boundsBehavior: Flickable.StopAtBounds
            ScrollBar.vertical: ScrollBar {}
            delegate: ColumnLayout {
                required property string path
                required property string outcomeText
                required property bool isBack
                required property string accessibleName
                width: ListView.view.width - 32
                spacing: 1
                Accessible.role: Accessible.ListItem
                Accessible.name: accessibleName
                Text {
                    Layout.fillWidth: true
                    text: parent.path
                    elide: Text.ElideMiddle
                    color: Theme.primaryText
                    font.family: Theme.fontFamily
                    font.pixelSize: Theme.body
                }
                Text {
                    Layout.fillWidth: true
                    text: parent.outcomeText
                    wrapMode: Text.WordWrap
                    color: parent.isBack ? Theme.successText : Theme.warningText
                    font.family: Theme.fontFamily
                    font.pixelSize: Theme.caption
                }
            }
        }

        Item {
            visible: !sheet.showsSummary
            Layout.fillWidth: true
            Layout.fillHeight: true

            Text {
                objectName: "historyPlaceholder"
                anchors.centerIn: parent
                visible: historyList.count === 0 && !sheet.presenter.isBusy
                text: "No uninstalls yet"
                color: Theme.secondaryText
                font.family: Theme.fontFamily
                font.pixelSize: Theme.body
            }

            ListView {
                id: historyList
                objectName: "historyList"
                anchors.fill: parent
                model: sheet.presenter.historyModel
                clip: true
                topMargin: 8
                bottomMargin: 8
                keyNavigationEnabled: true
                boundsBehavior: Flickable.StopAtBounds
                ScrollBar.vertical: ScrollBar {}
                delegate: Item {
                    id: record
                    required property int index
                    required property string appsText
                    required property string dateText
                    required property string detailText
                    required property bool canPutBack
                    required property string accessibleName
                    width: ListView.view.width
                    implicitHeight: row.implicitHeight + 16
                    height: implicitHeight
                    Accessible.role: Accessible.ListItem
                    Accessible.name: accessibleName

                    RowLayout {
                        id: row
                        anchors.fill: parent
                        anchors.leftMargin: 16
                        anchors.rightMargin: 16
                        spacing: 12
                        SymbolImage {
                            symbol: "clock.fill"
                            color: Theme.secondaryText
                            size: 18
                        }
                        ColumnLayout {
                            Layout.fillWidth: true
                            spacing: 2
                            Text {
                                objectName: "historyApps"
                                Layout.fillWidth: true
                                text: record.appsText
                                elide: Text.ElideRight
                                color: Theme.primaryText
                                font.family: Theme.fontFamily
                                font.pixelSize: Theme.body
                                font.weight: Font.DemiBold
                            }
                            Text {
                                Layout.fillWidth: true
                                text: record.dateText + " · " + record.detailText
                                elide: Text.ElideRight
                                color: Theme.secondaryText
                                font.family: Theme.fontFamily
                                font.pixelSize: Theme.caption
                            }
                        }
                        CapsuleButton {
                            objectName: "historyPutBackButton"
                            text: "Put Back"
                            fontSize: 12
                            padX: 12
                            padY: 4
                            enabled: record.canPutBack && !sheet.presenter.isBusy
                            Accessible.name: "Put Back " + record.appsText + " from " + record.dateText
                            onClicked: sheet.presenter.putBack(record.index)
                        }
                    }
                    Rectangle {
                        anchors.bottom: parent.bottom
                        anchors.left: parent.left
                        anchors.right: parent.right
                        anchors.leftMargin: 16
                        implicitHeight: 1
                        color: Theme.hairline
                    }
                }
            }
        }
    }
}
