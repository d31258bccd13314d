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
    readonly property bool showsList: resultsPresenter.body === ResultsPresenter.CategoryList
                                      || resultsPresenter.body === ResultsPresenter.AppList
    signal addAppClicked()
    signal putBackClicked()

    ResultsPresenter {
        id: resultsPresenter
        viewModel: view.viewModel
    }

    WindowBackground {}

    // Says each change of state to a screen reader: a status line it watches by name.
    Item {
        objectName: "statusAnnouncer"
        Accessible.role: Accessible.StatusBar
        Accessible.name: resultsPresenter.statusText
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        ResultsHeader {
            Layout.fillWidth: true
            presenter: resultsPresenter
            viewModel: view.viewModel
            onLogsClicked: view.showingLogs = !view.showingLogs
            onAddAppClicked: view.addAppClicked()
        }
        HDivider { Layout.fillWidth: true }

        ListToolbar {
            objectName: "listToolbar"
            Layout.fillWidth: true
            visible: view.showsList
            listModel: resultsPresenter.listModel
        }

        Loader {
            id: body
            objectName: "resultsBody"
            Layout.fillWidth: true
            Layout.fillHeight: true
            readonly property int state: resultsPresenter.body
            sourceComponent: state === ResultsPresenter.Scanning ? scanningBody
                           : state === ResultsPresenter.Uninstalling ? uninstallingBody
                           : state === ResultsPresenter.Completed ? completedBody
                           : state === ResultsPresenter.ProtectedApp ? protectedBody
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
            onPutBackClicked: view.putBackClicked()
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

    // Return takes the default action (the confirmation, or Done), Escape cancels.
    readonly property bool keysFree: shortcutsEnabled && !showingConfirmation && !showingLogs
    Shortcut {
        sequences: ["Return", "Enter"]
        enabled: view.keysFree
        onActivated: {
            const action = resultsPresenter.defaultAction()
            if (action === ResultsPresenter.Done)
                view.viewModel.clearSessions()
            else if (action === ResultsPresenter.Confirm)
                view.showingConfirmation = true
        }
    }
    Shortcut {
        sequence: "Escape"
        enabled: view.keysFree && resultsPresenter.canCancel
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
