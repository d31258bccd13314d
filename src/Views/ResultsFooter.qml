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
    readonly property bool completed: presenter.bodyName === "completed"
    signal primaryClicked()

    implicitHeight: layout.implicitHeight + 48

    MaterialRect {
        anchors.fill: parent
        anchors.margins: -1
        anchors.topMargin: 0
        color: Qt.rgba(1, 1, 1, 0.5)
    }

    RowLayout {
        id: layout
        anchors.fill: parent
        anchors.margins: 24
        spacing: 16

        ColumnLayout {
            visible: footer.completed || !footer.presenter.isSingleSIPApp
            spacing: 6
            Text {
                objectName: "footerTitle"
                text: footer.completed ? footer.presenter.removedTotalText
                                       : footer.presenter.selectedText
                color: Theme.primaryText
                font.family: Theme.fontFamily
                font.pixelSize: 16
                font.weight: Font.DemiBold
            }
            Text {
                objectName: "footerDetail"
                text: footer.completed ? "Drop another app to quenz it"
                                       : footer.presenter.totalSizeText
                color: Theme.secondaryText
                font.family: Theme.fontFamily
                font.pixelSize: 13
            }
        }
        Item { Layout.fillWidth: true }

        CapsuleButton {
            id: cancelButton
            objectName: "cancelButton"
            visible: !footer.completed
            text: "Cancel"
            fontSize: 15
            padX: 24
            padY: 10
            enabled: !footer.viewModel.isProcessing
            Layout.rightMargin: footer.presenter.isSingleSIPApp ? 8 : 0
            onClicked: footer.viewModel.clearSessions()
        }
        CapsuleButton {
            id: primaryButton
            objectName: "primaryButton"
            visible: !footer.completed && !footer.presenter.isSingleSIPApp
            text: footer.presenter.primaryButtonText
            textColor: "white"
            fontSize: 16
            fontWeight: Font.DemiBold
            padX: 32
            padY: 12
            gradientFill: true
            startColor: footer.presenter.hasProtectedFiles ? Theme.red : Theme.blue
            endColor: footer.presenter.hasProtectedFiles ? Theme.orange : Theme.cyan
            enabled: footer.presenter.canUninstall
            onClicked: footer.primaryClicked()
        }
        CapsuleButton {
            id: doneButton
            objectName: "doneButton"
            visible: footer.completed
            text: "Done"
            textColor: "white"
            fontSize: 16
            fontWeight: Font.DemiBold
            padX: 32
            padY: 12
            gradientFill: true
            onClicked: footer.viewModel.clearSessions()
        }
    }
}
