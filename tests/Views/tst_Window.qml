// SPDX-License-Identifier: MIT
import QtQuick
import QtTest
import Quenzo
import QuenzoTest

// The window on a fake Mac: drop, select, confirm, uninstall, summary, log, Done.
TestCase {
    id: testCase
    name: "Window"
    width: 600
    height: 550
    visible: true
    when: windowShown

    Component { id: fixtureComponent; WindowFixture {} }
    Component { id: viewComponent; MainView { anchors.fill: parent } }
    Component { id: iconComponent; AppIconView {} }

    property var fixture
    property var viewModel
    property var view

    function init() {
        fixture = createTemporaryObject(fixtureComponent, testCase)
        viewModel = fixture.viewModel()
    }

    function cleanup() {
        if (view)
            view.destroy()
        view = null
        wait(0)
    }

    function show() {
        view = createTemporaryObject(viewComponent, testCase, { viewModel: viewModel })
        verify(view)
        return view
    }

    function child(name) {
        const found = findChild(view, name)
        verify(found, name)
        return found
    }

    // Writer with a cache folder and, when asked, a launch daemon that needs an administrator.
    function addWriter(withDaemon) {
        const url = fixture.addApp("/Applications/Writer.app", "com.example.Writer", "1.2", "#5b6cff")
        fixture.addFile("~/Library/Caches/com.example.Writer/Cache.db", 3000)
        if (withDaemon)
            fixture.addFile("/Library/LaunchDaemons/com.example.Writer.helper.plist", 1000)
        return url
    }

    function addApp(name, identifier) {
        return fixture.addApp("/Applications/" + name + ".app", identifier, "1", "#3388ff")
    }

    function dropAndWait(urls) {
        verify(view.handleDrop(urls))
        tryCompare(viewModel, "isScanning", false)
        tryVerify(() => findChild(view, "resultsView") !== null)
        tryVerify(() => child("resultsBody").state !== ResultsPresenter.Scanning)
    }

    function fileRows() {
        const rows = []
        const list = child("resultsList")
        for (let i = 0; i < list.contentItem.children.length; ++i) {
            const cell = list.contentItem.children[i]
            if (cell.kind === ResultsListModel.File && cell.visible)
                rows.push(cell)
        }
        return rows.sort((a, b) => a.index - b.index)
    }

    // The messages the log sheet lists, in its order.
    function sheetMessages(sheet) {
        const model = findChild(sheet, "logList").model
        const messages = []
        for (let row = 0; row < model.rowCount(); ++row)
            messages.push(model.data(model.index(row, 0), Qt.UserRole + 2))
        return messages
    }

    function confirmAndUninstall() {
        mouseClick(child("primaryButton"))
        const confirmation = child("confirmationAlert")
        tryCompare(confirmation, "opened", true)
        mouseClick(findChild(confirmation, "alertActionButton"))
        tryCompare(confirmation, "visible", false)
    }

    function session(row) {
        return fixture.session(row)
    }

    function test_fullDiskAccessButtonFollowsTheFlag() {
        fixture.fullDiskAccess = false
        viewModel.refreshFullDiskAccess()
        show()
        const button = child("fullDiskAccessButton")
        verify(button.visible)
        compare(button.text, "Allow Full Disk Access to find every leftover")
        mouseClick(button)
        compare(fixture.openedUrls[0],
                "x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles")
        fixture.fullDiskAccess = true
        viewModel.refreshFullDiskAccess()
        verify(!button.visible)
        compare(child("dropTitle").text, "Drag Apps Here to Uninstall")
    }

    function test_dropWithoutFileUrlsIsRefused() {
        show()
        verify(!view.handleDrop(["https://example.com/Writer.app"]))
        verify(!viewModel.hasNotice)
        compare(viewModel.sessionCount, 0)
    }

    function test_noticeIsShownAndClearedOnDismissal() {
        show()
        verify(view.handleDrop([fixture.documentUrl()]))
        const alert = child("noticeAlert")
        tryCompare(alert, "opened", true)
        compare(alert.title, "Quenzo")
        compare(alert.message, "Only apps can be quenzed. Drag an app from your Applications folder.")
        keyClick(Qt.Key_Return)
        tryCompare(alert, "visible", false)
        verify(!viewModel.hasNotice)
        // The same text can come again.
        view.handleDrop([fixture.documentUrl()])
        tryCompare(alert, "opened", true)
        mouseClick(findChild(alert, "alertCancelButton"))
        tryCompare(alert, "visible", false)
    }

    function test_overlayTexts() {
        show()
        dropAndWait([addWriter(true)])
        const overlay = child("dropOverlay")
        verify(!overlay.visible)
        view.isTargeted = true
        verify(overlay.visible)
        compare(overlay.text, "Drop to add to the list")
        // Held at the administrator prompt, the uninstall stays running.
        fixture.holdPrivilegedStep = true
        viewModel.uninstall()
        tryCompare(viewModel, "isProcessing", true)
        verify(!overlay.visible)
        fixture.holdPrivilegedStep = false
        tryCompare(viewModel, "isCompleted", true)
        verify(overlay.visible)
        compare(overlay.text, "Drop to quenz")
        view.isTargeted = false
    }

    function test_wholeFlow() {
        fixture.fullDiskAccess = false
        show()
        dropAndWait([addWriter(true)])
        const results = child("resultsView")
        compare(results.presenter.body, ResultsPresenter.CategoryList)
        tryCompare(child("headerTitle"), "text", "Writer")
        tryCompare(child("headerDetail"), "text", "com.example.Writer")
        tryCompare(child("headerVersion"), "text", "Version 1.2")
        verify(child("fullDiskAccessBanner").visible)
        verify(child("logsButton").enabled)

        // Discovery found the bundle, the cache and the launch daemon, all selected; the daemon
        // needs an administrator.
        const primary = child("primaryButton")
        tryCompare(primary, "enabled", true)
        tryVerify(() => fileRows().length === 3)
        compare(fileRows().map(row => row.displayPath),
                ["/Applications/Writer.app", "~/Library/Caches/com.example.Writer",
                 "/Library/LaunchDaemons/com.example.Writer.helper.plist"])
        const daemon = fileRows()[2]
        compare(daemon.badgeText, "• Requires admin")
        compare(primary.text, "Uninstall")
        compare(child("footerTitle").text, "3 files selected")
        mouseClick(findChild(daemon, "fileCheckBox"))
        tryCompare(primary, "text", "Move to Trash")
        compare(child("footerTitle").text, "2 files selected")
        compare(results.presenter.confirmationMessage.indexOf("administrator"), -1)
        mouseClick(findChild(daemon, "fileCheckBox"))
        tryCompare(primary, "text", "Uninstall")
        compare(child("footerTitle").text, "3 files selected")
        const footerDetail = child("footerDetail").text
        verify(/^Total size: [0-9.]+ KB$/.test(footerDetail), footerDetail)
        const totalSize = footerDetail.slice("Total size: ".length)

        // Return opens the confirmation, Escape closes it without uninstalling.
        keyClick(Qt.Key_Return)
        const confirmation = child("confirmationAlert")
        tryCompare(confirmation, "opened", true)
        compare(confirmation.title, "Confirm Uninstall")
        compare(confirmation.message, "Are you sure you want to remove Writer?\n\nThis will move 3 files ("
                + totalSize + ") to the Trash.\n\n⚠️ Some files require "
                + "administrator privileges. You may be prompted to authenticate with Touch ID or your password.")
        keyClick(Qt.Key_Escape)
        tryCompare(confirmation, "visible", false)
        verify(!viewModel.isProcessing)

        // While the administrator prompt is up, the user-level items are already in the Trash.
        fixture.holdPrivilegedStep = true
        confirmAndUninstall()
        tryCompare(child("resultsBody"), "state", ResultsPresenter.Uninstalling)
        verify(!child("cancelButton").enabled)
        tryCompare(child("busyTitle"), "text", "Uninstalling...")
        tryVerify(() => fixture.exists("~/.Trash/Writer.app"))
        verify(fixture.exists("/Library/LaunchDaemons/com.example.Writer.helper.plist"))
        fixture.holdPrivilegedStep = false

        tryCompare(child("resultsBody"), "state", ResultsPresenter.Completed)
        compare(child("outcomeHeadline").text, "Uninstall Complete")
        compare(child("outcomeSubline").text, "Files moved to Trash can be restored from Finder if needed.")
        compare(child("outcomeSymbol").symbol, "checkmark.circle.fill")
        compare(child("footerTitle").text, "3 files removed")
        compare(child("footerDetail").text, "Drop another app to quenz it")
        tryVerify(() => child("removedText").text.startsWith("3 files · "))
        verify(!child("fullDiskAccessBanner").visible)
        verify(!child("cancelButton").visible)

        // Everything went to HOME/.Trash, nothing was deleted.
        for (const gone of ["/Applications/Writer.app", "~/Library/Caches/com.example.Writer",
                            "/Library/LaunchDaemons/com.example.Writer.helper.plist"])
            verify(!fixture.exists(gone), gone)
        for (const trashed of ["~/.Trash/Writer.app/Contents/Info.plist",
                               "~/.Trash/com.example.Writer/Cache.db",
                               "~/.Trash/com.example.Writer.helper.plist"])
            verify(fixture.exists(trashed), trashed)

        // The summary rows arrive with the next refresh and move the buttons; press it directly.
        child("viewLogsButton").clicked()
        const sheet = child("logSheet")
        tryCompare(sheet, "opened", true)
        verify(!findChild(sheet, "logPlaceholder").visible)
        // The texts themselves are the uninstall's; the sheet shows them all, in order.
        const messages = sheetMessages(sheet)
        compare(messages.length, 8)
        verify(messages[0].startsWith("Found 3 files ("), messages[0])
        compare(messages[7], "✓ Uninstall completed successfully. 3 items moved to the Trash.")
        mouseClick(findChild(sheet, "logDoneButton"))
        tryCompare(sheet, "visible", false)

        mouseClick(child("openTrashButton"))
        verify(fixture.openedUrls[fixture.openedUrls.length - 1].endsWith("/Users/tester/.Trash"))

        keyClick(Qt.Key_Return)
        tryCompare(viewModel, "sessionCount", 0)
        verify(child("dropCard").visible)
    }

    function test_noneDisablesThePrimaryButton() {
        show()
        dropAndWait([addWriter(false)])
        const primary = child("primaryButton")
        tryCompare(primary, "enabled", true)
        session(0).setAllSelected(false)
        tryCompare(primary, "enabled", false)
        compare(primary.opacity, 0.5)
        compare(child("footerTitle").text, "0 files selected")
        keyClick(Qt.Key_Return)
        verify(!child("confirmationAlert").visible)
        verify(!viewModel.isProcessing)
    }

    function test_keyboardTogglesRows() {
        show()
        dropAndWait([addWriter(false)])
        tryVerify(() => fileRows().length === 2)
        const box = findChild(fileRows()[0], "fileCheckBox")
        compare(box.Accessible.name, fileRows()[0].displayPath)
        box.forceActiveFocus()
        keyClick(Qt.Key_Space)
        tryCompare(child("footerTitle"), "text", "1 files selected")
        keyClick(Qt.Key_Space)
        tryCompare(child("footerTitle"), "text", "2 files selected")
        keyClick(Qt.Key_Escape)
        tryCompare(viewModel, "sessionCount", 0)
    }

    function test_fiveAppsAndTheSystemApp() {
        show()
        const names = ["A", "B", "C", "D", "E"]
        dropAndWait(names.map(name => addApp(name, "com.example." + name)))
        tryCompare(child("headerTitle"), "text", "5 Apps")
        tryCompare(child("headerDetail"), "text", "A, B, C, D, E")
        compare(child("resultsView").presenter.headerIcons.length, 4)
        compare(child("resultsView").presenter.body, ResultsPresenter.AppList)
        compare(child("resultsView").presenter.batchName, "5 apps")

        const chess = fixture.addApp("/System/Applications/Chess.app", "com.apple.Chess", "3", "")
        child("cancelButton").clicked()
        tryCompare(viewModel, "sessionCount", 0)
        dropAndWait([chess])
        tryCompare(child("resultsBody"), "state", ResultsPresenter.ProtectedApp)
        verify(child("protectionBanner").visible)
        compare(child("protectedTitle").text, "Cannot Uninstall System App")
        verify(!child("primaryButton").visible)
        verify(!child("footerTitle").parent.visible)
        mouseClick(child("cancelButton"))
        tryCompare(viewModel, "sessionCount", 0)
        verify(fixture.exists("/System/Applications/Chess.app"))
    }

    // One app scanning while the others are ready: the list stays, that section says so.
    function test_sessionStillScanningShowsItsOwnRow() {
        show()
        fixture.holdScan("com.example.B")
        verify(view.handleDrop([addApp("A", "com.example.A"), addApp("B", "com.example.B")]))
        tryVerify(() => findChild(view, "resultsBody") !== null)
        tryCompare(session(0), "fileCount", 1)
        tryCompare(child("resultsBody"), "state", ResultsPresenter.AppList)
        verify(viewModel.isScanning)
        verify(!child("primaryButton").enabled)
        fixture.releaseScans()
        tryCompare(viewModel, "isScanning", false)
        tryCompare(child("primaryButton"), "enabled", true)
        compare(child("footerTitle").text, "2 files selected")
    }

    function test_completedWithErrors_data() {
        return [
            { tag: "prompt cancelled", shell: "cancel", reason: "Administrator permission was canceled" },
            { tag: "script failed", shell: "fail",
              reason: "Failed to remove files with admin privileges: The disk is on fire." },
        ]
    }

    function test_completedWithErrors(data) {
        fixture.privilegedShell = data.shell
        show()
        dropAndWait([addWriter(true)])
        tryCompare(child("primaryButton"), "enabled", true)
        confirmAndUninstall()
        tryCompare(child("resultsBody"), "state", ResultsPresenter.Completed)
        compare(child("outcomeHeadline").text, "Finished with Some Errors")
        compare(child("outcomeSubline").text, "Some files couldn't be removed. Check the logs for details.")
        compare(child("outcomeSymbol").symbol, "exclamationmark.circle.fill")
        tryCompare(child("failedText"), "text", "1 couldn't be removed")
        compare(child("footerTitle").text, "2 files removed")
        verify(!child("summaryDivider").visible)

        // The user-level moves stay done; the daemon stays where it was.
        verify(fixture.exists("~/.Trash/Writer.app"))
        verify(fixture.exists("~/.Trash/com.example.Writer/Cache.db"))
        verify(fixture.exists("/Library/LaunchDaemons/com.example.Writer.helper.plist"))
        verify(!fixture.exists("~/.Trash/com.example.Writer.helper.plist"))

        child("viewLogsButton").clicked()
        const sheet = child("logSheet")
        tryCompare(sheet, "opened", true)
        const messages = sheetMessages(sheet)
        compare(messages.slice(-2), [
            "Failed to remove: /Library/LaunchDaemons/com.example.Writer.helper.plist - " + data.reason,
            "⚠ Uninstall completed with errors. 2 succeeded, 1 failed, 0 skipped.",
        ])
        const model = findChild(sheet, "logList").model
        compare(model.data(model.index(model.rowCount() - 1, 0), Qt.UserRole + 3), false)
        compare(model.data(model.index(1, 0), Qt.UserRole + 3), true)
        mouseClick(findChild(sheet, "logDoneButton"))
        tryCompare(sheet, "visible", false)
    }

    function test_appIconPlaceholder() {
        const icon = createTemporaryObject(iconComponent, testCase, { size: 20 })
        verify(findChild(icon, "appIconPlaceholder").visible)
        icon.iconSource = "data:image/png;base64,bm90IGFuIGltYWdl"
        tryCompare(findChild(icon, "appIconImage"), "status", Image.Error)
        verify(findChild(icon, "appIconPlaceholder").visible)
    }

    // Apps with enough files each that the list scrolls.
    function dropApps(names, heldIdentifier) {
        const urls = []
        for (const name of names) {
            const identifier = "com.example." + name
            urls.push(addApp(name, identifier))
            for (const place of ["Caches/" + identifier, "Application Support/" + name,
                                 "Logs/" + name, "HTTPStorages/" + identifier])
                fixture.addFile("~/Library/" + place + "/data", 100)
        }
        if (heldIdentifier)
            fixture.holdScan(heldIdentifier)
        verify(view.handleDrop(urls))
        tryVerify(() => findChild(view, "resultsList") !== null)
    }

    function focusedRowTop(list) {
        const box = list.Window.activeFocusItem
        verify(box && box.objectName === "fileCheckBox", "a row's checkbox has the focus")
        return box.mapToItem(list, 0, 0).y
    }

    // Another app finishing its scan above the focused row, then an app removed above it: the
    // row keeps the keyboard focus and its place on screen.
    function test_listStaysSteady() {
        show()
        dropApps(["A", "B", "C", "D", "E", "F"], "com.example.A")
        tryCompare(viewModel, "isScanning", true)
        tryVerify(() => session(5).fileCount > 0)
        const list = child("resultsList")
        list.positionViewAtEnd()
        wait(50)
        const rows = fileRows()
        const target = rows[rows.length - 2]
        const path = target.displayPath
        findChild(target, "fileCheckBox").forceActiveFocus()
        const top = focusedRowTop(list)

        fixture.releaseScans()
        tryCompare(viewModel, "isScanning", false)
        tryVerify(() => session(0).fileCount > 0)
        wait(50)
        compare(list.Window.activeFocusItem.Accessible.name, path)
        compare(focusedRowTop(list), top)

        viewModel.removeSession(session(1))
        tryCompare(viewModel, "sessionCount", 5)
        wait(50)
        compare(list.Window.activeFocusItem.Accessible.name, path)
        compare(focusedRowTop(list), top)
    }

    // Cancel is the confirmation's default: a second Return dismisses it.
    function test_returnThenReturnLeavesEverythingInPlace() {
        show()
        dropAndWait([addWriter(false)])
        tryCompare(child("primaryButton"), "enabled", true)
        const confirmation = child("confirmationAlert")
        keyClick(Qt.Key_Return)
        tryCompare(confirmation, "opened", true)
        keyClick(Qt.Key_Return)
        tryCompare(confirmation, "visible", false)
        wait(100)
        verify(!viewModel.isProcessing)
        verify(fixture.exists("/Applications/Writer.app"))
        verify(fixture.exists("~/Library/Caches/com.example.Writer/Cache.db"))
    }

    // The items a keyboard reaches, in visible order.
    function interactiveItems(item, found) {
        if (!item.visible)
            return found
        if (item.focusPolicy !== undefined && (item.focusPolicy & Qt.TabFocus) && item.enabled)
            found.push(item)
        for (let i = 0; i < item.children.length; ++i)
            interactiveItems(item.children[i], found)
        return found
    }

    function test_everyControlHasAUniqueName_data() {
        return [{ tag: "drop zone", apps: [] }, { tag: "one app", apps: ["Writer"] },
                { tag: "three apps", apps: ["Writer", "Reader", "Painter"] }]
    }

    function test_everyControlHasAUniqueName(data) {
        fixture.fullDiskAccess = false
        viewModel.refreshFullDiskAccess()
        show()
        if (data.apps.length > 0) {
            dropApps(data.apps)
            tryCompare(viewModel, "isScanning", false)
            tryVerify(() => fileRows().length > 0)
        }
        const names = new Set()
        const items = interactiveItems(view, [])
        verify(items.length > (data.apps.length > 0 ? 8 : 1), "controls found: " + items.length)
        for (const item of items) {
            const name = item.Accessible.name
            verify(name && name.length > 0, "unnamed " + item)
            verify(!names.has(name), "named twice: " + name)
            names.add(name)
        }
        if (data.apps.length > 1)
            verify(names.has("Remove Writer from the list"))
        if (data.apps.length === 1)
            verify(names.has("Select all in Caches"))
    }

    function luminance(color) {
        const channel = v => v <= 0.03928 ? v / 12.92 : Math.pow((v + 0.055) / 1.055, 2.4)
        return 0.2126 * channel(color.r) + 0.7152 * channel(color.g) + 0.0722 * channel(color.b)
    }

    function test_contrast_data() {
        return [{ tag: "light", appearance: "light", dark: false },
                { tag: "dark", appearance: "dark", dark: true }]
    }

    function test_contrast(data) {
        fixture.setAppearance(data.appearance)
        compare(Theme.dark, data.dark)
        verify(Theme.contrastPairs.length > 40)
        for (const pair of Theme.contrastPairs) {
            const a = luminance(pair.text)
            const b = luminance(pair.background)
            const ratio = (Math.max(a, b) + 0.05) / (Math.min(a, b) + 0.05)
            verify(ratio >= (pair.large ? 3 : 4.5), pair.name + ": " + ratio.toFixed(2))
        }
        fixture.setAppearance("light")
    }

    function test_summaryButtonsStayInsideTheWindowWithTwentyApps() {
        show()
        const names = []
        for (let i = 1; i <= 20; ++i)
            names.push("App" + i)
        dropApps(names)
        tryCompare(viewModel, "isScanning", false)
        tryCompare(child("primaryButton"), "enabled", true)
        confirmAndUninstall()
        tryCompare(child("resultsBody"), "state", ResultsPresenter.Completed)
        wait(100)
        const footer = child("doneButton").mapToItem(view, 0, 0).y
        for (const name of ["viewLogsButton", "openTrashButton", "doneButton"]) {
            const button = child(name)
            const at = button.mapToItem(view, 0, 0)
            verify(at.y >= 0 && at.y + button.height <= view.height, name + " at " + at.y)
            if (name !== "doneButton")
                verify(at.y + button.height < footer, name + " above the footer")
        }
        verify(child("summaryScrollBar").visible)
        verify(child("summaryMoreHint").visible)
    }

    function test_rowMenu_data() {
        return [{ tag: "copy", item: "copyPathItem",
                  check: () => compare(fixture.copiedTexts, ["/Library/LaunchDaemons/com.example.Writer.helper.plist"]) },
                { tag: "reveal", item: "revealItem",
                  check: () => verify(fixture.openedUrls[0].endsWith("/Library/LaunchDaemons")) }]
    }

    function test_rowMenu(data) {
        show()
        dropAndWait([addWriter(true)])
        tryVerify(() => fileRows().length === 3)
        const daemon = fileRows()[2]
        mouseClick(daemon, 100, 10, Qt.RightButton)
        const menu = findChild(child("resultsList"), "rowMenu")
        tryCompare(menu, "opened", true)
        mouseClick(findChild(menu.contentItem, data.item) || menu.itemAt(data.item === "revealItem" ? 0 : 1))
        tryCompare(menu, "visible", false)
        data.check()
    }

    // Ctrl+O lists the Applications folder; two apps ticked become two sessions at once.
    function test_addAppsFromTheApplicationsFolder() {
        addWriter(false)
        addApp("Reader", "com.example.Reader")
        fixture.addApp("/Applications/Utilities/Console.app", "com.example.Console", "1", "")
        show()
        keySequence(StandardKey.Open)
        const dialog = child("addAppDialog")
        tryCompare(dialog, "opened", true)
        const list = findChild(dialog.contentItem, "appPickerList")
        tryCompare(list, "count", 3)
        const names = []
        for (let i = 0; i < list.count; ++i)
            names.push(list.itemAtIndex(i).name)
        compare(names, ["Console", "Reader", "Writer"])
        mouseClick(list.itemAtIndex(0))
        mouseClick(list.itemAtIndex(2))
        keyClick(Qt.Key_Return)
        tryCompare(dialog, "visible", false)
        tryCompare(viewModel, "sessionCount", 2)
        tryCompare(viewModel, "isScanning", false)
        compare([session(0).displayName, session(1).displayName], ["Console", "Writer"])
    }

    function test_putBackFromTheCompletionScreenBringsTheFilesBack() {
        view = createTemporaryObject(viewComponent, testCase,
                                     { viewModel: viewModel, putBack: fixture.putBackPresenter() })
        dropAndWait([addWriter(true)])
        confirmAndUninstall()
        tryCompare(viewModel, "isCompleted", true, 60000)
        tryVerify(() => !fixture.uninstallRunning())
        const moved = ["/Applications/Writer.app", "~/Library/Caches/com.example.Writer/Cache.db",
                       "/Library/LaunchDaemons/com.example.Writer.helper.plist"]
        for (const path of moved)
            verify(!fixture.exists(path), path)

        tryVerify(() => findChild(view, "putBackButton") && findChild(view, "putBackButton").visible)
        mouseClick(child("putBackButton"))
        const sheet = child("putBackSheet")
        tryCompare(sheet, "opened", true)
        tryCompare(view.putBack, "state", PutBackPresenter.Restored, 60000)
        for (const path of moved)
            verify(fixture.exists(path), path)
        compare(child("putBackTitle").text, "Everything Is Back")
        verify(child("putBackSummary").text.includes("not loaded again"))

        // The history lists the run with nothing left to put back.
        mouseClick(child("putBackDoneButton"))
        tryCompare(sheet, "visible", false)
        viewModel.clearSessions()
        mouseClick(child("historyButton"))
        tryCompare(sheet, "opened", true)
        tryCompare(view.putBack, "isBusy", false)
        const history = child("historyList")
        compare(history.count, 1)
        tryVerify(() => findChild(history, "historyPutBackButton") !== null)
        verify(!findChild(history, "historyPutBackButton").enabled)
    }

    function test_leftoversOfDeletedAppsGoThroughTheUsualUninstall() {
        // Tracer left a container of its own identifier: strong evidence. Sketch left a cache.
        const tracer = ["~/Library/Application Support/com.gone.tracer/data",
                        "~/Library/Containers/com.gone.tracer/Data/prefs"]
        for (const path of tracer)
            fixture.addFile(path, 2000)
        fixture.addFile("~/Library/Caches/com.gone.sketch/cache.db", 500)
        show()
        mouseClick(child("findLeftoversButton"))
        tryCompare(viewModel, "isFindingLeftovers", false)
        tryCompare(viewModel, "sessionCount", 2)
        const names = [session(0).bundleIdentifier, session(1).bundleIdentifier].sort()
        compare(names, ["com.gone.sketch", "com.gone.tracer"])
        compare(viewModel.selectedFilesCount, tracer.length)

        confirmAndUninstall()
        tryCompare(viewModel, "isCompleted", true, 60000)
        for (const path of tracer)
            verify(!fixture.exists(path), path)
        verify(fixture.exists("~/Library/Caches/com.gone.sketch/cache.db"))
        tryVerify(() => findChild(view, "putBackButton") && findChild(view, "putBackButton").visible)
    }
}
