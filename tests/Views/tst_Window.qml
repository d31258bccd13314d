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

    function item(path, category, size, extra) {
        const map = extra || {}
        map.path = path
        map.category = category
        map.size = size
        return map
    }

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

    function addWriter(extraItems) {
        const url = fixture.addApp("/Applications/Writer.app", "com.example.Writer", "1.2", "#5b6cff")
        fixture.setItems("com.example.Writer", [
            item("/Applications/Writer.app", "application", 2000000),
            item("~/Library/Caches/com.example.Writer", "caches", 3000),
        ].concat(extraItems || []))
        return url
    }

    function dropAndWait(urls) {
        verify(view.handleDrop(urls))
        tryCompare(viewModel, "isScanning", false)
        tryVerify(() => findChild(view, "resultsView") !== null)
        tryVerify(() => child("resultsBody").name !== "scanning")
        wait(20)
    }

    function fileRows() {
        const rows = []
        const list = child("resultsList")
        for (let i = 0; i < list.contentItem.children.length; ++i) {
            const cell = list.contentItem.children[i]
            if (cell.kind === "file" && cell.visible)
                rows.push(cell)
        }
        return rows.sort((a, b) => a.index - b.index)
    }

    function checkBoxOf(cell) {
        return findChild(cell, "fileCheckBox")
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
        dropAndWait([addWriter()])
        const overlay = child("dropOverlay")
        verify(!overlay.visible)
        view.isTargeted = true
        verify(overlay.visible)
        compare(overlay.text, "Drop to add to the list")
        viewModel.uninstall()
        tryCompare(viewModel, "isProcessing", true)
        verify(!overlay.visible)
        fixture.finishUninstall()
        tryCompare(viewModel, "isCompleted", true)
        verify(overlay.visible)
        compare(overlay.text, "Drop to quenz")
        view.isTargeted = false
    }

    function test_wholeFlow() {
        fixture.fullDiskAccess = false
        show()
        dropAndWait([addWriter([item("/Library/LaunchDaemons/com.example.Writer.helper.plist",
                                     "launchDaemons", 1000, { selected: false })])])
        const results = child("resultsView")
        compare(results.presenter.bodyName, "categoryList")
        tryCompare(child("headerTitle"), "text", "Writer")
        tryCompare(child("headerDetail"), "text", "com.example.Writer")
        tryCompare(child("headerVersion"), "text", "Version 1.2")
        verify(child("fullDiskAccessBanner").visible)
        verify(child("logsButton").enabled)

        const primary = child("primaryButton")
        tryCompare(primary, "enabled", true)
        compare(primary.text, "Move to Trash")
        compare(child("footerTitle").text, "2 files selected")

        // Ticking the launch daemon needs an administrator.
        tryVerify(() => fileRows().length === 3)
        const daemon = fileRows()[2]
        compare(daemon.displayPath, "/Library/LaunchDaemons/com.example.Writer.helper.plist")
        compare(daemon.badgeText, "• Requires admin")
        mouseClick(checkBoxOf(daemon))
        tryCompare(primary, "text", "Uninstall")
        compare(child("footerTitle").text, "3 files selected")
        verify(results.presenter.confirmationMessage.indexOf("administrator privileges") > 0)
        mouseClick(checkBoxOf(daemon))
        tryCompare(primary, "text", "Move to Trash")

        // Return opens the confirmation, Escape closes it without uninstalling.
        keyClick(Qt.Key_Return)
        const confirmation = child("confirmationAlert")
        tryCompare(confirmation, "opened", true)
        compare(confirmation.title, "Confirm Uninstall")
        compare(confirmation.message.split("\n\n")[0], "Are you sure you want to remove Writer?")
        keyClick(Qt.Key_Escape)
        tryCompare(confirmation, "visible", false)
        compare(viewModel.sessionCount, 1)

        mouseClick(primary)
        tryCompare(confirmation, "opened", true)
        mouseClick(findChild(confirmation, "alertActionButton"))
        tryCompare(child("resultsBody"), "name", "uninstalling")
        verify(!child("cancelButton").enabled)
        tryCompare(child("busyTitle"), "text", "Uninstalling...")

        fixture.finishUninstall()
        tryCompare(child("resultsBody"), "name", "completed")
        compare(child("outcomeHeadline").text, "Uninstall Complete")
        compare(child("footerTitle").text, "2 files removed")
        compare(child("footerDetail").text, "Drop another app to quenz it")
        verify(!child("fullDiskAccessBanner").visible)
        verify(!child("cancelButton").visible)
        compare(child("outcomeSymbol").symbol, "checkmark.circle.fill")

        // The summary rows arrive with the next refresh and move the buttons; press it directly.
        child("viewLogsButton").clicked()
        const sheet = child("logSheet")
        tryCompare(sheet, "opened", true)
        compare(sheet.width, 500)
        compare(sheet.height, 400)
        verify(!findChild(sheet, "logPlaceholder").visible)
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
        dropAndWait([addWriter()])
        const primary = child("primaryButton")
        tryCompare(primary, "enabled", true)
        const none = findChild(child("resultsList"), "noneButton")
        mouseClick(none)
        mouseClick(findChild(child("resultsList").contentItem.children[0], "noneButton") || none)
        viewModel.sessions[0].setAllSelected(false)
        tryCompare(primary, "enabled", false)
        compare(primary.opacity, 0.5)
        compare(child("footerTitle").text, "0 files selected")
        keyClick(Qt.Key_Return)
        wait(50)
        verify(!child("confirmationAlert").visible)
    }

    function test_oneFileConfirmationHasNoSingular() {
        show()
        const url = fixture.addApp("/Applications/Solo.app", "com.example.Solo", "", "")
        fixture.setItems("com.example.Solo", [item("/Applications/Solo.app", "application", 1000)])
        dropAndWait([url])
        const results = child("resultsView")
        tryVerify(() => results.presenter.confirmationMessage.indexOf("This will move 1 files (") > 0)
        compare(child("headerVersion").visible, false)
    }

    function test_keyboardTogglesRows() {
        show()
        dropAndWait([addWriter()])
        tryVerify(() => fileRows().length === 2)
        const box = checkBoxOf(fileRows()[0])
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
        const urls = []
        const names = ["A", "B", "C", "D", "E"]
        for (const name of names) {
            urls.push(fixture.addApp("/Applications/" + name + ".app", "com.example." + name, "1", "#3388ff"))
            fixture.setItems("com.example." + name, [item("/Applications/" + name + ".app", "application", 10)])
        }
        dropAndWait(urls)
        tryCompare(child("headerTitle"), "text", "5 Apps")
        tryCompare(child("headerDetail"), "text", "A, B, C, D, E")
        compare(child("resultsView").presenter.headerIcons.length, 4)
        compare(child("resultsView").presenter.bodyName, "appList")
        compare(child("resultsView").presenter.batchName, "5 apps")

        const chess = fixture.addApp("/System/Applications/Chess.app", "com.apple.Chess", "3", "")
        fixture.setItems("com.apple.Chess", [item("/System/Applications/Chess.app", "application", 10)])
        child("cancelButton").clicked()
        tryCompare(viewModel, "sessionCount", 0)
        dropAndWait([chess])
        tryCompare(child("resultsBody"), "name", "protectedApp")
        verify(child("protectionBanner").visible)
        compare(child("protectedTitle").text, "Cannot Uninstall System App")
        verify(!child("primaryButton").visible)
        verify(!child("footerTitle").parent.visible)
        mouseClick(child("cancelButton"))
        tryCompare(viewModel, "sessionCount", 0)
    }

    function test_completedWithErrors() {
        show()
        const url = addWriter()
        fixture.setFailures("com.example.Writer", 1)
        dropAndWait([url])
        viewModel.uninstall()
        fixture.finishUninstall()
        tryCompare(child("resultsBody"), "name", "completed")
        compare(child("outcomeHeadline").text, "Finished with Some Errors")
        compare(child("outcomeSubline").text, "Some files couldn't be removed. Check the logs for details.")
        compare(child("outcomeSymbol").symbol, "exclamationmark.circle.fill")
        compare(child("failedText").text, "1 couldn't be removed")
        compare(child("footerTitle").text, "1 files removed")
        verify(!child("summaryDivider").visible)
    }

    function test_appIconPlaceholder() {
        const icon = createTemporaryObject(iconComponent, testCase, { size: 20 })
        compare(icon.width, 20)
        compare(icon.cornerRadius, 4.4)
        verify(findChild(icon, "appIconPlaceholder").visible)
        icon.iconSource = "data:image/png;base64,bm90IGFuIGltYWdl"
        wait(50)
        verify(findChild(icon, "appIconPlaceholder").visible)
    }
}
