// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quenzo

// The found items as an inset grouped list: by app for several sessions, by category for one.
ListView {
    id: list
    required property ResultsPresenter presenter
    required property MainViewModel viewModel

    model: presenter.listModel
    clip: true
    reuseItems: true
    cacheBuffer: 400
    boundsBehavior: Flickable.StopAtBounds
    topMargin: 8
    bottomMargin: 16
    leftMargin: 20
    rightMargin: 20
    activeFocusOnTab: false
    ScrollBar.vertical: ScrollBar { policy: ScrollBar.AsNeeded }

    delegate: Item {
        id: cell
        required property int index
        required property string kind
        required property QtObject session
        required property string title
        required property string detail
        required property string symbol
        required property string iconSource
        required property bool showsSelectionButtons
        required property string displayPath
        required property string sizeText
        required property string categoryName
        required property string categorySymbol
        required property bool showsCategory
        required property bool isSelected
        required property bool isSIPProtected
        required property string badgeText
        required property string badgeTone
        required property string groupPosition

        readonly property bool isHeader: kind === "appHeader" || kind === "categoryHeader"
        width: ListView.view.width - list.leftMargin - list.rightMargin
        height: loader.item ? loader.item.implicitHeight : 0

        // The group's card, opaque so its pieces can overlap: rounded at the first and last
        // rows, square where a row continues the group, hairlines between rows.
        Rectangle {
            visible: !cell.isHeader
            anchors.fill: parent
            color: Theme.rowBackground
            radius: 10
        }
        Rectangle {
            visible: cell.groupPosition === "middle" || cell.groupPosition === "last"
            width: parent.width
            height: parent.height / 2
            color: Theme.rowBackground
        }
        Rectangle {
            visible: cell.groupPosition === "middle" || cell.groupPosition === "first"
            y: parent.height / 2
            width: parent.width
            height: parent.height / 2
            color: Theme.rowBackground
        }
        Rectangle {
            visible: cell.groupPosition === "middle" || cell.groupPosition === "last"
            x: 38
            width: parent.width - 38
            height: 1
            color: Theme.hairline
        }

        Loader {
            id: loader
            width: parent.width
            sourceComponent: cell.isHeader ? headerRow
                           : cell.kind === "file" ? fileRow
                           : cell.kind === "scanning" ? scanningRow : protectedRow
        }

        Component {
            id: headerRow
            SectionHeader {
                objectName: cell.kind
                isApp: cell.kind === "appHeader"
                title: cell.title
                detail: cell.detail
                symbol: cell.symbol
                iconSource: cell.iconSource
                showsSelectionButtons: cell.showsSelectionButtons
                onAllClicked: list.presenter.listModel.setAllSelected(cell.index, true)
                onNoneClicked: list.presenter.listModel.setAllSelected(cell.index, false)
                onRemoveClicked: list.viewModel.removeSession(cell.session)
            }
        }
        Component {
            id: fileRow
            FileItemRow {
                objectName: "fileRow"
                displayPath: cell.displayPath
                sizeText: cell.sizeText
                categoryName: cell.categoryName
                categorySymbol: cell.categorySymbol
                showsCategory: cell.showsCategory
                isSelected: cell.isSelected
                isSIPProtected: cell.isSIPProtected
                badgeText: cell.badgeText
                badgeTone: cell.badgeTone
                onToggled: {
                    list.presenter.listModel.toggle(cell.index)
                    list.presenter.listModel.flush()
                }
                onFocused: list.positionViewAtIndex(cell.index, ListView.Contain)
            }
        }
        Component {
            id: scanningRow
            Item {
                objectName: "scanningRow"
                implicitHeight: 36
                Row {
                    anchors.verticalCenter: parent.verticalCenter
                    x: 12
                    spacing: 10
                    Spinner { anchors.verticalCenter: parent.verticalCenter; size: 14 }
                    Text {
                        anchors.verticalCenter: parent.verticalCenter
                        text: "Scanning for files..."
                        color: Theme.secondaryText
                        font.family: Theme.fontFamily
                        font.pixelSize: Theme.body
                    }
                }
            }
        }
        Component {
            id: protectedRow
            Item {
                objectName: "protectedRow"
                implicitHeight: 36
                Row {
                    anchors.verticalCenter: parent.verticalCenter
                    x: 12
                    spacing: 8
                    SymbolImage {
                        anchors.verticalCenter: parent.verticalCenter
                        symbol: "exclamationmark.shield.fill"
                        color: Theme.orange
                        size: 14
                    }
                    Text {
                        anchors.verticalCenter: parent.verticalCenter
                        text: "Part of macOS, can't be uninstalled. It will be skipped."
                        color: Theme.orange
                        font.family: Theme.fontFamily
                        font.pixelSize: Theme.callout
                    }
                }
            }
        }
    }
}
