// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quenzo

// The head of a section of the results list: an app (icon, name, selection totals, All/None,
// remove) or a category (symbol, name, item count, All/None).
Item {
    id: header
    property bool isApp
    property string title
    property string detail
    property string symbol
    property string iconSource
    property bool showsSelectionButtons
    signal allClicked()
    signal noneClicked()
    signal removeClicked()

    implicitHeight: layout.implicitHeight + 8 + 6

    RowLayout {
        id: layout
        anchors.fill: parent
        anchors.leftMargin: 4
        anchors.rightMargin: 4
        anchors.topMargin: 8
        anchors.bottomMargin: 2
        spacing: header.isApp ? 10 : 12

        AppIconView {
            visible: header.isApp
            iconSource: header.iconSource
            size: 20
        }
        SymbolImage {
            visible: !header.isApp
            symbol: header.symbol
            color: Theme.blue
            size: Theme.caption + 2
        }
        Text {
            objectName: "sectionTitle"
            Layout.fillWidth: true
            text: header.title
            elide: Text.ElideRight
            color: Theme.primaryText
            font.family: Theme.fontFamily
            font.pixelSize: Theme.headline
            font.weight: Font.DemiBold
        }
        Text {
            objectName: "sectionDetail"
            visible: header.isApp ? header.showsSelectionButtons : true
            text: header.detail
            color: Theme.secondaryText
            font.family: Theme.fontFamily
            font.pixelSize: Theme.caption
        }
        VDivider { visible: header.showsSelectionButtons }
        LinkButton {
            objectName: "allButton"
            visible: header.showsSelectionButtons
            text: "All"
            onClicked: header.allClicked()
        }
        LinkButton {
            objectName: "noneButton"
            visible: header.showsSelectionButtons
            text: "None"
            onClicked: header.noneClicked()
        }
        VDivider { visible: header.isApp && header.showsSelectionButtons }
        Button {
            id: removeButton
            objectName: "removeButton"
            visible: header.isApp
            padding: 2
            Layout.preferredWidth: 18
            Layout.preferredHeight: 18
            focusPolicy: Qt.StrongFocus
            Accessible.name: "Remove from list"
            ToolTip.visible: hovered
            ToolTip.delay: 600
            ToolTip.text: "Remove from list"
            onClicked: header.removeClicked()
            contentItem: SymbolImage {
                symbol: "xmark.circle.fill"
                color: removeButton.hovered ? Theme.secondaryText : Qt.rgba(0, 0, 0, 0.22)
                size: 14
            }
            background: Rectangle {
                radius: height / 2
                color: "transparent"
                border.color: Qt.rgba(0, 0.48, 1, 0.5)
                border.width: removeButton.visualFocus ? 2 : 0
            }
        }
    }
}
