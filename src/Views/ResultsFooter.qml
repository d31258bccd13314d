// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quenzo

// The foot of the results: the totals and Cancel / the primary action, or after the uninstall
// the removed total and Done.
Item {
    id: footer
    required property ResultsPresenter presenter
    required property MainViewModel viewModel
    readonly property bool completed: presenter.body === ResultsPresenter.Completed
    signal primaryClicked()

    implicitHeight: layout.implicitHeight + 48

    MaterialRect {
        anchors.fill: parent
        anchors.margins: -1
        anchors.topMargin: 0
        color: Theme.material
    }

    RowLayout {
        id: layout
        anchors.fill: parent
        anchors.margins: 24
        spacing: 16

        ColumnLayout {
            visible: footer.completed || !footer.presenter.isSingleSIPApp
            Layout.fillWidth: true
            spacing: 6
            Text {
                objectName: "footerTitle"
                Layout.fillWidth: true
                text: footer.presenter.footerTitle
                elide: Text.ElideRight
                color: Theme.primaryText
                font.family: Theme.fontFamily
                font.pixelSize: 16
                font.weight: Font.DemiBold
            }
            Text {
                objectName: "footerDetail"
                Layout.fillWidth: true
                text: footer.presenter.footerDetail
                elide: Text.ElideRight
                color: Theme.secondaryText
                font.family: Theme.fontFamily
                font.pixelSize: 13
            }
        }
        Item { Layout.fillWidth: !footer.completed && footer.presenter.isSingleSIPApp }

        CapsuleButton {
            id: cancelButton
            objectName: "cancelButton"
            visible: !footer.completed
            text: "Cancel"
            fontSize: 15
            padX: 24
            padY: 10
            enabled: footer.presenter.canCancel
            Layout.rightMargin: footer.presenter.isSingleSIPApp ? 8 : 0
            onClicked: footer.viewModel.clearSessions()
        }
        CapsuleButton {
            id: primaryButton
            objectName: "primaryButton"
            visible: !footer.completed && !footer.presenter.isSingleSIPApp
            text: footer.presenter.primaryButtonText
            textColor: Theme.textOnAccent
            fontSize: 16
            fontWeight: Font.DemiBold
            padX: 32
            padY: 12
            gradientFill: true
            startColor: footer.presenter.hasProtectedFiles ? Theme.destructiveFill : Theme.accentFill
            endColor: footer.presenter.hasProtectedFiles ? Theme.destructiveFillEnd
                                                         : Theme.accentFillEnd
            enabled: footer.presenter.canUninstall
            onClicked: footer.primaryClicked()
        }
        CapsuleButton {
            id: doneButton
            objectName: "doneButton"
            visible: footer.completed
            text: "Done"
            textColor: Theme.textOnAccent
            fontSize: 16
            fontWeight: Font.DemiBold
            padX: 32
            padY: 12
            gradientFill: true
            onClicked: footer.viewModel.clearSessions()
        }
    }
}
