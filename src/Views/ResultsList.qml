// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quenzo

// The found items as an inset grouped list: by app for several sessions, by category for one.
// Whatever takes the keyboard focus inside a row scrolls that row into view; a file row offers
// its context menu (right click, the menu key) and the shortcuts behind it.
ListView {
    id: list
    required property ResultsPresenter presenter
    required property MainViewModel viewModel
    // The item of the file row that last held the keyboard focus.
    property string focusedPath
    readonly property alias contextMenu: menu

    model: presenter.listModel
    clip: true
    reuseItems: true
    cacheBuffer: 400
    boundsBehavior: Flickable.StopAtBounds
    topMargin: 8
    bottomMargin: 16
    leftMargin: 20
    rightMargin: 20
    keyNavigationEnabled: false
    ScrollBar.vertical: ScrollBar { policy: ScrollBar.AsNeeded }

    function openMenu(path, item, x, y) {
        focusedPath = path
        menu.popup(item, x, y)
    }

    Menu {
        id: menu
        objectName: "rowMenu"
        background: Rectangle {
            implicitWidth: 220
            radius: 8
            color: Theme.alertBackground
            border.color: Theme.controlEdge
        }
        MenuItem {
            objectName: "revealItem"
            text: list.presenter.revealText
            onTriggered: list.viewModel.revealInFileManager(list.focusedPath)
        }
        MenuItem {
            objectName: "copyPathItem"
            text: "Copy Path"
            onTriggered: list.viewModel.copyPath(list.focusedPath)
        }
    }
    Shortcut {
        sequence: "Ctrl+R"
        enabled: list.activeFocus && list.focusedPath !== ""
        onActivated: list.viewModel.revealInFileManager(list.focusedPath)
    }
    Shortcut {
        sequence: "Ctrl+Alt+C"
        enabled: list.activeFocus && list.focusedPath !== ""
        onActivated: list.viewModel.copyPath(list.focusedPath)
    }

    delegate: FocusScope {
        id: cell
        required property int index
        required property int kind
        required property QtObject session
        required property string title
        required property string detail
        required property string symbol
        required property string iconSource
        required property bool showsSelectionButtons
        required property string path
        required property string displayPath
        required property string reason
        required property string sizeText
        required property string categoryName
        required property string categorySymbol
        required property bool showsCategory
        required property bool isSelected
        required property bool isSIPProtected
        required property string badgeText
        required property int badgeTone
        required property int groupPosition
        required property string accessibleName
        required property string accessibleDescription
        required property string selectAllName
        required property string selectNoneName
        required property string removeName

        readonly property bool isHeader: cell.kind === ResultsListModel.AppHeader
                                         || cell.kind === ResultsListModel.CategoryHeader
        readonly property bool continuesAbove: cell.groupPosition === ResultsListModel.Middle
                                               || cell.groupPosition === ResultsListModel.Last
        readonly property bool continuesBelow: cell.groupPosition === ResultsListModel.Middle
                                               || cell.groupPosition === ResultsListModel.First
        width: ListView.view.width - list.leftMargin - list.rightMargin
        height: loader.item ? loader.item.implicitHeight : 0
        onActiveFocusChanged: if (cell.activeFocus) list.positionViewAtIndex(cell.index, ListView.Contain)

        // The group's card, opaque so its pieces can overlap: rounded at the first and last
        // rows, square where a row continues the group, hairlines between rows.
        Rectangle {
            visible: !cell.isHeader
            anchors.fill: parent
            color: Theme.rowBackground
            radius: 10
        }
        Rectangle {
            visible: cell.continuesAbove
            width: parent.width
            height: parent.height / 2
            color: Theme.rowBackground
        }
        Rectangle {
            visible: cell.continuesBelow
            y: parent.height / 2
            width: parent.width
            height: parent.height / 2
            color: Theme.rowBackground
        }
        Rectangle {
            visible: cell.continuesAbove
            x: 38
            width: parent.width - 38
            height: 1
            color: Theme.hairline
        }

        Loader {
            id: loader
            width: parent.width
            focus: true
            sourceComponent: cell.isHeader ? headerRow
                           : cell.kind === ResultsListModel.File ? fileRow
                           : cell.kind === ResultsListModel.Scanning ? scanningRow : protectedRow
        }

        Component {
            id: headerRow
            SectionHeader {
                objectName: cell.kind === ResultsListModel.AppHeader ? "appHeader" : "categoryHeader"
                isApp: cell.kind === ResultsListModel.AppHeader
                title: cell.title
                detail: cell.detail
                symbol: cell.symbol
                iconSource: cell.iconSource
                showsSelectionButtons: cell.showsSelectionButtons
                selectAllName: cell.selectAllName
                selectNoneName: cell.selectNoneName
                removeName: cell.removeName
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
                reason: cell.reason
                sizeText: cell.sizeText
                categoryName: cell.categoryName
                categorySymbol: cell.categorySymbol
                showsCategory: cell.showsCategory
                isSelected: cell.isSelected
                isSIPProtected: cell.isSIPProtected
                badgeText: cell.badgeText
                badgeTone: cell.badgeTone
                accessibleName: cell.accessibleName
                accessibleDescription: cell.accessibleDescription
                onToggled: {
                    list.presenter.listModel.toggle(cell.index)
                    list.presenter.listModel.flush()
                }
                onFocused: list.focusedPath = cell.path
                onMenuRequested: (x, y) => list.openMenu(cell.path, this, x, y)
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
                        color: Theme.warningText
                        font.family: Theme.fontFamily
                        font.pixelSize: Theme.callout
                    }
                }
            }
        }
    }
}
