// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quenzo

// Above the found items: a filter field and the order of the items under each header.
Item {
    id: toolbar
    required property ResultsListModel listModel

    implicitHeight: row.implicitHeight + 12

    RowLayout {
        id: row
        anchors.fill: parent
        anchors.leftMargin: 20
        anchors.rightMargin: 20
        anchors.topMargin: 8
        spacing: 10

        TextField {
            id: filterField
            objectName: "filterField"
            Layout.fillWidth: true
            placeholderText: "Filter"
            placeholderTextColor: Theme.secondaryText
            color: Theme.primaryText
            font.family: Theme.fontFamily
            font.pixelSize: Theme.callout
            leftPadding: 8
            topPadding: 4
            bottomPadding: 4
            Accessible.name: "Filter found items"
            text: toolbar.listModel.filterText
            onTextEdited: toolbar.listModel.filterText = text
            background: Rectangle {
                radius: 6
                color: Theme.rowBackground
                border.color: filterField.activeFocus ? Theme.accent : Theme.controlEdge
                border.width: filterField.activeFocus ? 2 : 1
            }
        }
        Text {
            text: "Sort by"
            color: Theme.secondaryText
            font.family: Theme.fontFamily
            font.pixelSize: Theme.callout
        }
        ComboBox {
            id: sortBox
            objectName: "sortBox"
            implicitWidth: 120
            font.family: Theme.fontFamily
            font.pixelSize: Theme.callout
            model: ["Found", "Name", "Size", "Category"]
            currentIndex: toolbar.listModel.sortOrder
            Accessible.name: "Sort found items by " + currentText
            onActivated: (index) => toolbar.listModel.sortOrder = index
            contentItem: Text {
                leftPadding: 8
                text: sortBox.displayText
                color: Theme.primaryText
                font: sortBox.font
                verticalAlignment: Text.AlignVCenter
            }
            background: Rectangle {
                implicitHeight: 24
                radius: 6
                color: Theme.controlBackground
                border.color: sortBox.visualFocus ? Theme.accent : Theme.controlEdge
                border.width: sortBox.visualFocus ? 2 : 1
            }
        }
    }
}
