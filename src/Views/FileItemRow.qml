// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quenzo

// One found item: its checkbox, display path, why it was found, category (in the per-app list),
// size and one badge. Items that are part of the system are dimmed and cannot be ticked. The
// checkbox carries the row's keyboard focus, its name and its description for screen readers.
Item {
    id: row
    property string displayPath
    property string reason
    property string sizeText
    property string categoryName
    property string categorySymbol
    property bool showsCategory
    property bool isSelected
    property bool isSIPProtected
    property string badgeText
    property int badgeTone
    property string accessibleName
    property string accessibleDescription
    readonly property alias checkBox: checkBox

    signal toggled()
    signal focused()
    signal menuRequested(real x, real y)

    implicitHeight: layout.implicitHeight + 8 + 8
    opacity: isSIPProtected ? 0.6 : 1

    readonly property color badgeColor: badgeTone === ResultsListModel.Warning ? Theme.warningText
                                      : badgeTone === ResultsListModel.Accent ? Theme.accentText
                                      : Theme.secondaryText

    ToolTip.visible: reason !== "" && hover.hovered
    ToolTip.delay: 800
    ToolTip.text: "Found by " + reason
    HoverHandler { id: hover }
    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: (point) => row.menuRequested(point.position.x, point.position.y)
    }

    RowLayout {
        id: layout
        anchors.fill: parent
        anchors.leftMargin: 12
        anchors.rightMargin: 12
        anchors.topMargin: 4
        anchors.bottomMargin: 4
        spacing: 10

        CheckBox {
            id: checkBox
            objectName: "fileCheckBox"
            checked: row.isSelected
            enabled: !row.isSIPProtected
            focusPolicy: Qt.StrongFocus
            padding: 0
            Layout.preferredWidth: 16
            Layout.preferredHeight: 16
            Layout.alignment: Qt.AlignVCenter
            Accessible.name: row.accessibleName
            Accessible.description: row.accessibleDescription
            onToggled: {
                row.toggled()
                checked = Qt.binding(() => row.isSelected)
            }
            onActiveFocusChanged: if (activeFocus) row.focused()
            Keys.onMenuPressed: row.menuRequested(0, row.height)
            indicator: Rectangle {
                implicitWidth: 16
                implicitHeight: 16
                radius: 4
                color: checkBox.checked ? Theme.accent : Theme.rowBackground
                border.color: checkBox.checked ? Qt.darker(Theme.accent, 1.1) : Theme.controlEdge
                border.width: 1
                SymbolImage {
                    anchors.centerIn: parent
                    visible: checkBox.checked
                    symbol: "checkmark.circle.fill"
                    color: Theme.accent
                    size: 16
                }
                Rectangle {
                    objectName: "focusRing"
                    anchors.fill: parent
                    anchors.margins: -3
                    radius: 6
                    color: "transparent"
                    border.color: Theme.accent
                    border.width: 2.5
                    visible: checkBox.visualFocus
                }
            }
            contentItem: Item {}
        }

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2
            Text {
                objectName: "filePath"
                Layout.fillWidth: true
                text: row.displayPath
                elide: Text.ElideMiddle
                maximumLineCount: 1
                color: row.isSIPProtected ? Theme.secondaryText : Theme.primaryText
                font.family: Theme.fontFamily
                font.pixelSize: Theme.body
            }
            RowLayout {
                Layout.fillWidth: true
                spacing: 8
                Row {
                    visible: row.showsCategory
                    spacing: 3
                    SymbolImage {
                        anchors.verticalCenter: parent.verticalCenter
                        symbol: row.categorySymbol
                        color: Theme.secondaryText
                        size: Theme.caption + 1
                    }
                    Text {
                        text: row.categoryName
                        color: Theme.secondaryText
                        font.family: Theme.fontFamily
                        font.pixelSize: Theme.caption
                    }
                }
                Text {
                    objectName: "fileSize"
                    text: row.sizeText
                    color: Theme.secondaryText
                    font.family: Theme.fontFamily
                    font.pixelSize: Theme.caption
                }
                Text {
                    objectName: "fileBadge"
                    visible: text !== ""
                    text: row.badgeText
                    Layout.maximumWidth: implicitWidth
                    Layout.fillWidth: true
                    elide: Text.ElideRight
                    maximumLineCount: 1
                    color: row.badgeColor
                    font.family: Theme.fontFamily
                    font.pixelSize: Theme.caption
                }
                Text {
                    objectName: "fileReason"
                    visible: text !== ""
                    Layout.fillWidth: true
                    text: row.reason
                    elide: Text.ElideRight
                    maximumLineCount: 1
                    color: Theme.tertiaryText
                    font.family: Theme.fontFamily
                    font.pixelSize: Theme.caption
                }
            }
        }
    }
}
