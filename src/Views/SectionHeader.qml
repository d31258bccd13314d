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
    property string selectAllName
    property string selectNoneName
    property string removeName
    signal allClicked()
    signal noneClicked()
    signal removeClicked()

    implicitHeight: layout.implicitHeight + 8 + 6
    Accessible.role: Accessible.Heading
    Accessible.name: title
    Accessible.description: detail

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
            color: Theme.accent
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
            Accessible.name: header.selectAllName
            onClicked: header.allClicked()
        }
        LinkButton {
            objectName: "noneButton"
            visible: header.showsSelectionButtons
            text: "None"
            Accessible.name: header.selectNoneName
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
            Accessible.name: header.removeName
            ToolTip.visible: hovered
            ToolTip.delay: 600
            ToolTip.text: header.removeName
            onClicked: header.removeClicked()
            contentItem: SymbolImage {
                symbol: "xmark.circle.fill"
                color: removeButton.hovered ? Theme.primaryText : Theme.secondaryText
                size: 14
            }
            background: Rectangle {
                radius: height / 2
                color: "transparent"
                border.color: Theme.accent
                border.width: removeButton.visualFocus ? 2 : 0
            }
        }
    }
}
