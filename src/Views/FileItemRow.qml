// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quenzo

// One found item: its checkbox, display path, category (in the per-app list), size and one
// badge. Items that are part of the system are dimmed and cannot be ticked.
Item {
    id: row
    property string displayPath
    property string sizeText
    property string categoryName
    property string categorySymbol
    property bool showsCategory
    property bool isSelected
    property bool isSIPProtected
    property string badgeText
    property string badgeTone
    signal toggled()
    signal focused()

    implicitHeight: layout.implicitHeight + 8 + 8
    opacity: isSIPProtected ? 0.6 : 1

    readonly property color badgeColor: badgeTone === "orange" ? Theme.orange
                                      : badgeTone === "blue" ? Theme.blue
                                      : Theme.secondaryText

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
            Accessible.name: row.displayPath
            onToggled: {
                row.toggled()
                checked = Qt.binding(() => row.isSelected)
            }
            onActiveFocusChanged: if (activeFocus) row.focused()
            indicator: Rectangle {
                implicitWidth: 16
                implicitHeight: 16
                radius: 4
                color: checkBox.checked ? Theme.blue : Qt.rgba(1, 1, 1, 0.9)
                border.color: checkBox.checked ? Qt.darker(Theme.blue, 1.1) : Qt.rgba(0, 0, 0, 0.22)
                border.width: 1
                SymbolImage {
                    anchors.centerIn: parent
                    visible: checkBox.checked
                    symbol: "checkmark.circle.fill"
                    color: Theme.blue
                    size: 16
                }
                Rectangle {
                    anchors.fill: parent
                    anchors.margins: -3
                    radius: 6
                    color: "transparent"
                    border.color: Qt.rgba(0, 0.48, 1, 0.5)
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
            Row {
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
                    width: Math.min(implicitWidth, Math.max(60, layout.width - x - 40))
                    elide: Text.ElideRight
                    maximumLineCount: 1
                    color: row.badgeColor
                    font.family: Theme.fontFamily
                    font.pixelSize: Theme.caption
                }
            }
        }
    }
}
