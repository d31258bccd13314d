// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import Quenzo

// The results screen: header, the body chosen by state, footer, the confirmation and the log.
Item {
    id: view
    required property MainViewModel viewModel
    // False while another alert (the notice) has the keyboard.
    property bool shortcutsEnabled: true
    property bool showingConfirmation: false
    property bool showingLogs: false
    readonly property alias presenter: resultsPresenter

    ResultsPresenter {
        id: resultsPresenter
        viewModel: view.viewModel
    }

    WindowBackground {}

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        ResultsHeader {
            Layout.fillWidth: true
            presenter: resultsPresenter
            viewModel: view.viewModel
            onLogsClicked: view.showingLogs = !view.showingLogs
        }
        HDivider { Layout.fillWidth: true }

        Loader {
            id: body
            objectName: "resultsBody"
            Layout.fillWidth: true
            Layout.fillHeight: true
            readonly property string name: resultsPresenter.bodyName
            sourceComponent: name === "scanning" ? scanningBody
                           : name === "uninstalling" ? uninstallingBody
                           : name === "completed" ? completedBody
                           : name === "protectedApp" ? protectedBody
                           : listBody
        }

        HDivider { Layout.fillWidth: true }
        ResultsFooter {
            Layout.fillWidth: true
            presenter: resultsPresenter
            viewModel: view.viewModel
            onPrimaryClicked: view.showingConfirmation = true
        }
    }

    Component {
        id: scanningBody
        BusyBody { title: "Scanning for files..."; subtitle: "Analyzing app and searching for related files" }
    }
    Component {
        id: uninstallingBody
        BusyBody { title: "Uninstalling..."; subtitle: "Removing selected files" }
    }
    Component {
        id: completedBody
        CompletionSummary {
            presenter: resultsPresenter
            viewModel: view.viewModel
            onViewLogsClicked: view.showingLogs = true
        }
    }
    Component {
        id: protectedBody
        ProtectedAppBody {}
    }
    Component {
        id: listBody
        ResultsList {
            objectName: "resultsList"
            presenter: resultsPresenter
            viewModel: view.viewModel
        }
    }

    // Return takes the default action (the primary button, or Done), Escape cancels.
    readonly property bool keysFree: shortcutsEnabled && !showingConfirmation && !showingLogs
    Shortcut {
        sequences: ["Return", "Enter"]
        enabled: view.keysFree
        onActivated: {
            if (resultsPresenter.bodyName === "completed")
                view.viewModel.clearSessions()
            else if (resultsPresenter.canUninstall && !resultsPresenter.isSingleSIPApp)
                view.showingConfirmation = true
        }
    }
    Shortcut {
        sequence: "Escape"
        enabled: view.keysFree && resultsPresenter.bodyName !== "completed" && !view.viewModel.isProcessing
        onActivated: view.viewModel.clearSessions()
    }

    AlertDialog {
        id: confirmation
        objectName: "confirmationAlert"
        title: "Confirm Uninstall"
        message: resultsPresenter.confirmationMessage
        cancelText: "Cancel"
        actionText: "Uninstall"
        onActionTriggered: view.viewModel.uninstall()
        onClosed: view.showingConfirmation = false
    }
    onShowingConfirmationChanged: if (showingConfirmation) confirmation.open()

    LogView {
        id: logSheet
        objectName: "logSheet"
        logModel: resultsPresenter.logModel
        onClosed: view.showingLogs = false
    }
    onShowingLogsChanged: showingLogs ? logSheet.open() : logSheet.close()
}
