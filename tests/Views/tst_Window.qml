// SPDX-License-Identifier: MIT
import QtQuick
import QtTest
import Quenzo
import QuenzoTest

// The window on a fake Mac: drop, select, confirm, uninstall, summary, log, Put Back, Done.
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
    readonly property string daemon: "/Library/LaunchDaemons/com.example.Writer.helper.plist"

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
        view = createTemporaryObject(viewComponent, testCase,
                                     { viewModel: viewModel, putBack: fixture.putBackPresenter() })
    }

    function child(name) {
        const found = findChild(view, name)
        verify(found, name)
        return found
    }

    function session(row) { return fixture.session(row) }

    // Writer with a cache folder and, when asked, a launch daemon that needs an administrator.
    function addWriter(withDaemon) {
        const url = fixture.addApp("/Applications/Writer.app", "com.example.Writer", "1.2", "#5b6cff")
        fixture.addFile("~/Library/Caches/com.example.Writer/Cache.db", 3000)
        if (withDaemon)
            fixture.addFile(daemon, 1000)
        return url
    }

    function addApp(name) {
        return fixture.addApp("/Applications/" + name + ".app", "com.example." + name, "1", "#3388ff")
    }

    function dropAndWait(urls) {
        verify(view.handleDrop(urls))
        tryCompare(viewModel, "isScanning", false)
        tryVerify(() => findChild(view, "resultsBody") !== null)
        tryVerify(() => child("resultsBody").state !== ResultsPresenter.Scanning)
    }

    function fileRows() {
        const list = child("resultsList")
        return Array.from(list.contentItem.children)
            .filter(cell => cell.kind === ResultsListModel.File && cell.visible)
            .sort((a, b) => a.index - b.index)
    }

    function confirmAndUninstall() {
        tryCompare(child("primaryButton"), "enabled", true)
        mouseClick(child("primaryButton"))
        const confirmation = child("confirmationAlert")
        tryCompare(confirmation, "opened", true)
        mouseClick(findChild(confirmation, "alertActionButton"))
        tryCompare(confirmation, "visible", false)
    }

    // Every control the keyboard reaches has a name of its own, `named` among them.
    function verifyControlsNamed(named, item = view, names = new Set()) {
        if (!item.visible)
            return
        if (item.focusPolicy !== undefined && (item.focusPolicy & Qt.TabFocus) && item.enabled) {
            verify(item.Accessible.name && item.Accessible.name.length > 0, "unnamed " + item)
            verify(!names.has(item.Accessible.name), "named twice: " + item.Accessible.name)
            names.add(item.Accessible.name)
        }
        for (let i = 0; i < item.children.length; ++i)
            verifyControlsNamed("", item.children[i], names)
        verify(!named || names.has(named), named)
    }

    function test_dropZone() {
        fixture.fullDiskAccess = false
        viewModel.refreshFullDiskAccess()
        show()
        const button = child("fullDiskAccessButton")
        verifyControlsNamed("Allow Full Disk Access to find every leftover")
        mouseClick(button)
        compare(fixture.openedUrls, ["x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles"])
        fixture.fullDiskAccess = true
        viewModel.refreshFullDiskAccess()
        verify(!button.visible)

        verify(!view.handleDrop(["https://example.com/Writer.app"]))
        verify(!viewModel.hasNotice)
        // A document is refused with a notice, which closes by Return or Cancel and can come again.
        const alert = child("noticeAlert")
        for (const close of [() => keyClick(Qt.Key_Return),
                             () => mouseClick(findChild(alert, "alertCancelButton"))]) {
            verify(view.handleDrop([fixture.documentUrl()]))
            tryCompare(alert, "opened", true)
            compare(alert.message, "Only apps can be quenzed. Drag an app from your Applications folder.")
            close()
            tryCompare(alert, "visible", false)
            verify(!viewModel.hasNotice)
        }
        compare(viewModel.sessionCount, 0)
    }

    // Writer with a daemon through the whole run, the administrator prompt answering as each row
    // says: what the screen shows, where the files end up, the log, and Put Back when granted.
    function test_uninstall_data() {
        return [
            { tag: "granted", shell: "run", removed: 3, headline: "Uninstall Complete",
              subline: "Files moved to Trash can be restored from Finder if needed.",
              symbol: "checkmark.circle.fill", failedText: "",
              logTail: ["Succeeded: ✓ Uninstall completed successfully. 3 items moved to the Trash."] },
            { tag: "prompt cancelled", shell: "cancel", removed: 2,
              headline: "Finished with Some Errors", symbol: "exclamationmark.circle.fill",
              subline: "Some files couldn't be removed. Check the logs for details.",
              failedText: "1 couldn't be removed",
              logTail: ["Failed: Failed to remove: " + daemon + " - Administrator permission was canceled",
                        "Failed: ⚠ Uninstall completed with errors. 2 succeeded, 1 failed, 0 skipped."] },
        ]
    }

    function test_uninstall(data) {
        fixture.fullDiskAccess = false
        fixture.privilegedShell = data.shell
        show()
        dropAndWait([addWriter(true)])
        compare(child("resultsView").presenter.body, ResultsPresenter.CategoryList)
        tryCompare(child("headerTitle"), "text", "Writer")
        compare(child("headerDetail").text, "com.example.Writer")
        compare(child("headerVersion").text, "Version 1.2")
        verify(child("fullDiskAccessBanner").visible)
        verifyControlsNamed("Select all in Caches")
        const overlay = child("dropOverlay")
        view.isTargeted = true
        verify(overlay.visible)
        compare(overlay.text, "Drop to add to the list")
        view.isTargeted = false

        // Discovery found the bundle, the cache and the daemon, all selected; the daemon needs an
        // administrator, so the button says Uninstall and the confirmation warns. Space toggles
        // the focused row; Return opens the confirmation, whose default is Cancel.
        const primary = child("primaryButton")
        tryVerify(() => fileRows().length === 3)
        compare(fileRows().map(row => row.displayPath),
                ["/Applications/Writer.app", "~/Library/Caches/com.example.Writer", daemon])
        const daemonRow = fileRows()[2]
        compare(daemonRow.badgeText, "• Requires admin")
        compare(primary.text, "Uninstall")
        const box = findChild(daemonRow, "fileCheckBox")
        compare(box.Accessible.name, daemon)
        box.forceActiveFocus()
        keyClick(Qt.Key_Space)
        tryCompare(primary, "text", "Move to Trash")
        compare(child("footerTitle").text, "2 files selected")
        const confirmation = child("confirmationAlert")
        keyClick(Qt.Key_Return)
        tryCompare(confirmation, "opened", true)
        verify(/^Are you sure you want to remove Writer\?\n\nThis will move 2 files \([0-9.]+ KB\) to the Trash\.$/
               .test(confirmation.message), confirmation.message)
        keyClick(Qt.Key_Return)
        tryCompare(confirmation, "visible", false)
        wait(100)
        verify(!viewModel.isProcessing && fixture.exists("~/Library/Caches/com.example.Writer/Cache.db"))
        box.forceActiveFocus()
        keyClick(Qt.Key_Space)
        tryCompare(primary, "text", "Uninstall")
        compare(child("footerTitle").text, "3 files selected")
        const totalSize = child("footerDetail").text.replace(/^Total size: /, "")
        verify(/^[0-9.]+ KB$/.test(totalSize), totalSize)
        keyClick(Qt.Key_Return)
        tryCompare(confirmation, "opened", true)
        compare(confirmation.message, "Are you sure you want to remove Writer?\n\nThis will move 3 files ("
                + totalSize + ") to the Trash.\n\n⚠️ Some files require administrator privileges. "
                + "You may be prompted to authenticate with Touch ID or your password.")
        keyClick(Qt.Key_Escape)
        tryCompare(confirmation, "visible", false)
        verify(!viewModel.isProcessing)
        // With nothing selected the button is dimmed and Return does nothing.
        session(0).setAllSelected(false)
        tryCompare(primary, "enabled", false)
        compare(primary.opacity, 0.5)
        compare(child("footerTitle").text, "0 files selected")
        keyClick(Qt.Key_Return)
        verify(!confirmation.visible)
        session(0).setAllSelected(true)
        // The row's menu opens its folder and copies its path.
        const menu = findChild(child("resultsList"), "rowMenu")
        for (const item of ["revealItem", "copyPathItem"]) {
            mouseClick(daemonRow, 100, 10, Qt.RightButton)
            tryCompare(menu, "opened", true)
            mouseClick(findChild(menu.contentItem, item) || menu.itemAt(item === "revealItem" ? 0 : 1))
            tryCompare(menu, "visible", false)
        }
        verify(fixture.openedUrls[0].endsWith("/Library/LaunchDaemons"), fixture.openedUrls[0])
        compare(fixture.copiedTexts, [daemon])

        // While the administrator prompt is up, the user-level items are already in the Trash.
        fixture.holdPrivilegedStep = true
        confirmAndUninstall()
        tryCompare(child("resultsBody"), "state", ResultsPresenter.Uninstalling)
        verify(!child("cancelButton").enabled)
        view.isTargeted = true
        verify(!overlay.visible)
        compare(child("busyTitle").text, "Uninstalling...")
        tryVerify(() => fixture.exists("~/.Trash/Writer.app"))
        verify(fixture.exists(daemon))
        fixture.holdPrivilegedStep = false

        tryCompare(child("resultsBody"), "state", ResultsPresenter.Completed)
        tryVerify(() => !fixture.uninstallRunning())
        verify(overlay.visible)
        compare(overlay.text, "Drop to quenz")
        view.isTargeted = false
        compare(child("outcomeHeadline").text, data.headline)
        compare(child("outcomeSubline").text, data.subline)
        compare(child("outcomeSymbol").symbol, data.symbol)
        compare(child("footerTitle").text, data.removed + " files removed")
        compare(child("footerDetail").text, "Drop another app to quenz it")
        tryVerify(() => child("removedText").text.startsWith(data.removed + " files · "))
        compare(child("failedText").text, data.failedText)
        verify(!child("summaryDivider").visible)
        verify(!child("fullDiskAccessBanner").visible)
        verify(!child("cancelButton").visible)
        // Everything went to HOME/.Trash, nothing was deleted; a refused daemon stays in place.
        for (const trashed of ["~/.Trash/Writer.app/Contents/Info.plist", "~/.Trash/com.example.Writer/Cache.db"])
            verify(fixture.exists(trashed), trashed)
        compare(fixture.exists(daemon), data.removed === 2)
        compare(fixture.exists("~/.Trash/com.example.Writer.helper.plist"), data.removed === 3)
        verify(!fixture.exists("/Applications/Writer.app"))

        // The log sheet lists the uninstall's texts in order, each with its result in words.
        child("viewLogsButton").clicked()
        const sheet = child("logSheet")
        tryCompare(sheet, "opened", true)
        const lines = findChild(sheet, "logList").model.plainText().trim().split("\n")
        verify(lines[0].includes(" Succeeded: Found 3 files ("), lines[0])
        data.logTail.forEach((text, i) => verify(
            lines[lines.length - data.logTail.length + i].endsWith(" " + text), lines.join("\n")))
        mouseClick(findChild(sheet, "logDoneButton"))
        tryCompare(sheet, "visible", false)
        mouseClick(child("openTrashButton"))
        verify(fixture.openedUrls[fixture.openedUrls.length - 1].endsWith("/Users/tester/.Trash"))

        if (data.removed === 3) {
            mouseClick(child("putBackButton"))
            const putBack = child("putBackSheet")
            tryCompare(putBack, "opened", true)
            tryCompare(view.putBack, "state", PutBackPresenter.Restored, 60000)
            for (const path of ["/Applications/Writer.app", "~/Library/Caches/com.example.Writer/Cache.db", daemon])
                verify(fixture.exists(path), path)
            compare(child("putBackTitle").text, "Everything Is Back")
            verify(child("putBackSummary").text.includes("not loaded again"))
            mouseClick(child("putBackDoneButton"))
            tryCompare(putBack, "visible", false)
        }
        keyClick(Qt.Key_Return)
        tryCompare(viewModel, "sessionCount", 0)
        verify(child("dropCard").visible)
        if (data.removed === 3) {
            // The history lists the run with nothing left to put back.
            mouseClick(child("historyButton"))
            tryCompare(child("putBackSheet"), "opened", true)
            const history = child("historyList")
            tryCompare(history, "count", 1)
            tryVerify(() => findChild(history, "historyPutBackButton") !== null)
            verify(!findChild(history, "historyPutBackButton").enabled)
        }
    }

    function focusedRowTop(list) {
        const box = list.Window.activeFocusItem
        verify(box && box.objectName === "fileCheckBox", "a row's checkbox has the focus")
        return box.mapToItem(list, 0, 0).y
    }

    // Twenty apps that scroll, the first still scanning: the others are listed, nothing can
    // start yet. Its scan finishing above the focused row, then an app removed above it, leave
    // the row its focus and its place on screen. The rest go to the Trash and the summary keeps
    // its buttons inside the window. Then a system app alone cannot be uninstalled.
    function test_severalApps() {
        show()
        const names = Array.from({ length: 20 }, (_, i) => "App" + (i + 1))
        const urls = names.map(name => addApp(name))
        for (const name of names) {
            for (const place of ["Caches/com.example.", "Application Support/", "Logs/"])
                fixture.addFile("~/Library/" + place + name + "/data", 100)
        }
        fixture.holdScan("com.example.App1")
        verify(view.handleDrop(urls))
        tryVerify(() => findChild(view, "resultsList") !== null && session(19).fileCount > 0)
        tryCompare(child("resultsBody"), "state", ResultsPresenter.AppList)
        verify(viewModel.isScanning)
        verify(!child("primaryButton").enabled)
        const list = child("resultsList")
        list.positionViewAtEnd()
        wait(50)
        const target = fileRows()[fileRows().length - 2]
        findChild(target, "fileCheckBox").forceActiveFocus()
        const path = target.displayPath
        const top = focusedRowTop(list)
        for (const change of [() => fixture.releaseScans(), () => viewModel.removeSession(session(1))]) {
            change()
            tryCompare(viewModel, "isScanning", false)
            tryVerify(() => session(0).fileCount > 0)
            wait(50)
            compare(list.Window.activeFocusItem.Accessible.name, path)
            compare(focusedRowTop(list), top)
        }
        tryCompare(child("primaryButton"), "enabled", true)
        compare(child("footerTitle").text, "76 files selected")
        compare(child("headerTitle").text, "19 Apps")
        compare(child("headerDetail").text, names.filter(name => name !== "App2").join(", "))
        compare(child("resultsView").presenter.headerIcons.length, 4)
        compare(child("resultsView").presenter.batchName, "19 apps")
        verifyControlsNamed("Remove App1 from the list")

        confirmAndUninstall()
        tryCompare(child("resultsBody"), "state", ResultsPresenter.Completed)
        wait(100)
        const footer = child("doneButton").mapToItem(view, 0, 0).y
        for (const name of ["viewLogsButton", "openTrashButton", "doneButton"]) {
            const button = child(name)
            const at = button.mapToItem(view, 0, 0)
            verify(at.y >= 0 && at.y + button.height <= view.height, name + " at " + at.y)
            verify(name === "doneButton" || at.y + button.height < footer, name + " above the footer")
        }
        verify(child("summaryScrollBar").visible)
        verify(child("summaryMoreHint").visible)

        const chess = fixture.addApp("/System/Applications/Chess.app", "com.apple.Chess", "3", "")
        mouseClick(child("doneButton"))
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

    // Every pair of text and background the theme declares is legible in both appearances; an
    // icon that cannot be read leaves its placeholder.
    function test_themeAndIcon() {
        const channel = v => v <= 0.03928 ? v / 12.92 : Math.pow((v + 0.055) / 1.055, 2.4)
        const luminance = c => 0.2126 * channel(c.r) + 0.7152 * channel(c.g) + 0.0722 * channel(c.b)
        for (const appearance of ["dark", "light"]) {
            fixture.setAppearance(appearance)
            compare(Theme.dark, appearance === "dark")
            verify(Theme.contrastPairs.length > 40)
            for (const pair of Theme.contrastPairs) {
                const a = luminance(pair.text)
                const b = luminance(pair.background)
                const ratio = (Math.max(a, b) + 0.05) / (Math.min(a, b) + 0.05)
                verify(ratio >= (pair.large ? 3 : 4.5), appearance + " " + pair.name + ": " + ratio.toFixed(2))
            }
        }
        const icon = createTemporaryObject(iconComponent, testCase, { size: 20 })
        verify(findChild(icon, "appIconPlaceholder").visible)
        icon.iconSource = "data:image/png;base64,bm90IGFuIGltYWdl"
        tryCompare(findChild(icon, "appIconImage"), "status", Image.Error)
        verify(findChild(icon, "appIconPlaceholder").visible)
    }

    // Ctrl+O lists the Applications folder; two apps ticked become two sessions at once. Then
    // the leftovers of deleted apps: Tracer left a container of its own identifier (strong
    // evidence, selected), Sketch a cache; they go through the usual uninstall.
    function test_addAppsAndLeftovers() {
        addWriter(false)
        addApp("Reader")
        fixture.addApp("/Applications/Utilities/Console.app", "com.example.Console", "1", "")
        const tracer = ["~/Library/Application Support/com.gone.tracer/data",
                        "~/Library/Containers/com.gone.tracer/Data/prefs"]
        for (const path of tracer)
            fixture.addFile(path, 2000)
        fixture.addFile("~/Library/Caches/com.gone.sketch/cache.db", 500)
        show()
        keySequence(StandardKey.Open)
        const dialog = child("addAppDialog")
        tryCompare(dialog, "opened", true)
        const list = findChild(dialog.contentItem, "appPickerList")
        tryCompare(list, "count", 3)
        compare([0, 1, 2].map(i => list.itemAtIndex(i).name), ["Console", "Reader", "Writer"])
        mouseClick(list.itemAtIndex(0))
        mouseClick(list.itemAtIndex(2))
        keyClick(Qt.Key_Return)
        tryCompare(dialog, "visible", false)
        tryCompare(viewModel, "sessionCount", 2)
        tryCompare(viewModel, "isScanning", false)
        compare([session(0).displayName, session(1).displayName], ["Console", "Writer"])
        keyClick(Qt.Key_Escape) // leaves the results
        tryCompare(viewModel, "sessionCount", 0)

        mouseClick(child("findLeftoversButton"))
        tryCompare(viewModel, "sessionCount", 2)
        tryCompare(viewModel, "isFindingLeftovers", false)
        compare([session(0).bundleIdentifier, session(1).bundleIdentifier].sort(),
                ["com.gone.sketch", "com.gone.tracer"])
        compare(viewModel.selectedFilesCount, tracer.length)
        confirmAndUninstall()
        tryCompare(viewModel, "isCompleted", true, 60000)
        for (const path of tracer)
            verify(!fixture.exists(path), path)
        verify(fixture.exists("~/Library/Caches/com.gone.sketch/cache.db"))
        tryVerify(() => findChild(view, "putBackButton") && findChild(view, "putBackButton").visible)
    }
}
