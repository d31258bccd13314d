// SPDX-License-Identifier: MIT
import QtQuick
import QtQuick.Controls
import Quenzo

// The content of the window: the drop zone or the results, the drop target and overlay, the
// notice alert, and the Full Disk Access refresh whenever the application becomes active.
Item {
    id: root
    required property MainViewModel viewModel
    // Put Back and the history; the window's own unless a test hands in one.
    property PutBackPresenter putBack: viewModel.putBack
    // A drag that carries file URLs hovers over the window.
    property bool isTargeted: false
    readonly property bool showsDropOverlay: isTargeted && viewModel.sessionCount > 0
                                             && !viewModel.isProcessing

    // Opens the "Add App…" dialog on the Applications folder.
    function addApps() {
        if (!viewModel.isProcessing)
            addAppDialog.open()
    }

    // The file URLs of a drop, in drop order.
    function fileUrls(urls) {
        const kept = []
        for (let i = 0; i < urls.length; ++i) {
            if (String(urls[i]).startsWith("file:"))
                kept.push(urls[i])
        }
        return kept
    }

    // Hands the drop's file URLs to the controller in one call; refuses a drop without any.
    function handleDrop(urls) {
        const kept = fileUrls(urls)
        if (kept.length === 0)
            return false
        viewModel.handleDroppedFiles(kept)
        return true
    }

    Loader {
        id: dropZoneLoader
        anchors.fill: parent
        active: root.viewModel.sessionCount === 0
        visible: active
        sourceComponent: DropZone {
            viewModel: root.viewModel
            isTargeted: root.isTargeted
            onAddAppClicked: root.addApps()
            onHistoryClicked: putBackSheet.openHistory()
        }
    }

    Loader {
        id: resultsLoader
        anchors.fill: parent
        active: root.viewModel.sessionCount > 0
        visible: active
        sourceComponent: ResultsView {
            objectName: "resultsView"
            viewModel: root.viewModel
            shortcutsEnabled: !noticeAlert.visible && !putBackSheet.visible
            onAddAppClicked: root.addApps()
            onPutBackClicked: {
                root.putBack.putBackRunStartedAt(root.viewModel.uninstallStarted)
                putBackSheet.openSummary()
            }
        }
    }

    DropArea {
        id: dropArea
        objectName: "dropArea"
        anchors.fill: parent
        keys: ["text/uri-list"]
        onEntered: (drag) => {
            // Only files light the window up: a link dragged from a web page is no app.
            root.isTargeted = drag.hasUrls && root.fileUrls(drag.urls).length > 0
            if (!root.isTargeted)
                drag.accepted = false
        }
        onExited: root.isTargeted = false
        onDropped: (drop) => {
            root.isTargeted = false
            if (root.handleDrop(drop.urls))
                drop.acceptProposedAction()
            else
                drop.accepted = false
        }
    }

    DropOverlay {
        objectName: "dropOverlay"
        anchors.fill: parent
        visible: root.showsDropOverlay
        text: resultsLoader.item ? resultsLoader.item.presenter.dropOverlayText : ""
    }

    Shortcut {
        sequence: StandardKey.Open
        enabled: !noticeAlert.visible
        onActivated: root.addApps()
    }

    AddAppDialog {
        id: addAppDialog
        objectName: "addAppDialog"
        viewModel: root.viewModel
    }

    PutBackSheet {
        id: putBackSheet
        objectName: "putBackSheet"
        presenter: root.putBack
    }

    AlertDialog {
        id: noticeAlert
        objectName: "noticeAlert"
        title: "Quenzo"
        message: root.viewModel.notice
        cancelText: "OK"
        onClosed: root.viewModel.dismissNotice()
    }

    Connections {
        target: root.viewModel
        function onNoticeChanged() {
            if (root.viewModel.hasNotice)
                noticeAlert.open()
        }
    }

    Connections {
        target: Qt.application
        function onStateChanged() {
            if (Qt.application.state === Qt.ApplicationActive)
                root.viewModel.refreshFullDiskAccess()
        }
    }
    Component.onCompleted: {
        viewModel.refreshFullDiskAccess()
        if (viewModel.hasNotice)
            noticeAlert.open()
    }
}
