// SPDX-License-Identifier: MIT
// Uninstalls through the real helper (run with the test's rights): two apps end to end in one
// prompt, then single items that fight back: items the policy refuses, links, vanished items, no
// Trash yet, names of 255 bytes with paths past 1,000 bytes below them, and what a hostile
// program of the user's plants before the uninstall or while the prompt is up. Every session
// completes, the outcome is logged as for any item, and no file is ever lost or moved anywhere
// but into the user's Trash.
#include "Platform/MacTools.h"
#include "Removal/AuthorizationService.h"
#include "Removal/UninstallService.h"
#include "fakemac/FakeMacRemovalTools.h"
#include "fakemac/FakeMacTools.h"
#include "fakemac/FakePrivilegedShell.h"
#include "fakemac/TreeFingerprint.h"
#include "support/SessionRun.h"
#include "support/TemporaryFakeMac.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {
using SessionRun::item;
using SessionRun::messages;
using Behaviour = FakePrivilegedShell::Behaviour;

const QString kCache = u"~/Library/Caches/com.acme.writer"_s;
const QString kAdmin = u"/Library/Caches/com.acme.writer"_s;
const QString kDaemon = u"/Library/LaunchDaemons/com.acme.writer.plist"_s;
const QString kLsregister = MacTools::lsregister();

// How the privileged step goes.
struct Run
{
    Behaviour behaviour = Behaviour::runAsCaller;
    std::function<void()> duringPrompt;
};
} // namespace

class tst_RemovalFaults : public QObject
{
    Q_OBJECT

    std::unique_ptr<TemporaryFakeMac> m_mac;
    std::shared_ptr<FakePrivilegedShell> m_shell;
    QSet<QString> m_unwritable; // folders the "user" may not write

    QString trash(const QString &name = {}) const
    {
        return name.isEmpty() ? m_mac->home() + u"/.Trash"_s : m_mac->trash(name);
    }

    // A folder with a file naming it, and a chain of folders reaching past 1,000 bytes of path.
    QString addDeepFolder(const QString &macPath)
    {
        m_mac->addTextFile(macPath + u"/state.json"_s, macPath.toUtf8());
        m_mac->addTextFile(m_mac->deepBelow(macPath) + u"/leaf"_s, "deep");
        return m_mac->path(macPath);
    }

    // The bundle (made when missing) first, then `items`.
    QSharedPointer<UninstallSession> makeSession(const QList<FileItem> &items,
                                                 const QString &bundle = u"Writer"_s)
    {
        AppInfo app;
        app.name = bundle + u".app"_s;
        app.bundleIdentifier = u"com.example."_s + bundle.toLower();
        app.bundlePath = m_mac->addFolder(u"/Applications/"_s + app.name);
        return SessionRun::readySession(
            app, QList{item(app.bundlePath, FileCategory::application, 1000)} + items);
    }

    void uninstall(const QList<QSharedPointer<UninstallSession>> &sessions, Run run = {})
    {
        m_shell = std::make_shared<FakePrivilegedShell>(run.behaviour);
        m_shell->duringPrompt = std::move(run.duringPrompt);
        UninstallService::Dependencies dependencies;
        dependencies.authorization = std::make_shared<const AuthorizationService>(
            m_mac->layout(), m_shell, FakePrivilegedShell::helper());
        dependencies.isWritable = [this](const QString &folder) {
            return !m_unwritable.contains(folder) && !m_unwritable.contains(u"*"_s);
        };
        UninstallService service(m_mac->layout(), dependencies);
        QVERIFY(SessionRun::toCompletion(service, sessions));
    }

private slots:
    void init()
    {
        m_mac = std::make_unique<TemporaryFakeMac>();
        QVERIFY(m_mac->isValid());
        m_mac->setDarwinUserDirectories(u"/private/var/folders/zz/abc/C"_s,
                                        u"/private/var/folders/zz/abc/T"_s);
        FakeMacRemovalTools::install(*m_mac);
        m_unwritable.clear();
    }

    void cleanup() { m_mac.reset(); }

    // Items in the user's places and the administrator's, a receipt, a loaded agent and daemon,
    // an agent that is not loaded,
    // one in a folder the user may not write, a Trash name already taken, a protected item, one
    // under /System and an unselected one; Alpha is running.
    void twoAppsInOnePrompt()
    {
#ifndef Q_OS_LINUX
        QSKIP("a running app is found through /proc");
#endif
        for (const QString &app : {u"Alpha"_s, u"Beta"_s})
            FakeMacRemovalTools::addRunnableApp(*m_mac, u"/Applications/%1.app"_s.arg(app),
                                                u"com.example."_s + app.toLower());
        FakeMacTools::addPackage(*m_mac, {u"com.example.alpha.pkg"_s, {}, true, 2048});
        addDeepFolder(u"~/.Trash/Data"_s);
        m_unwritable.insert(m_mac->path(u"~/Library/Containers"_s));
        const QString receipt =
            m_mac->path(u"/private/var/db/receipts/com.example.alpha.pkg.plist"_s);
        const QString agent = u"~/Library/LaunchAgents/com.example.alpha.agent.plist"_s;
        const QString idle = u"~/Library/LaunchAgents/com.example.alpha.idle.plist"_s;
        const QString daemon = u"/Library/LaunchDaemons/com.example.alpha.helper.plist"_s;
        // The items of Alpha, then those of Beta, and their names in the Trash.
        struct Planted
        {
            QString macPath;
            FileCategory category = FileCategory::caches;
            QString trashName = macPath.section(u'/', -1);
        };
        const QList<Planted> moves{
            {u"/Applications/Alpha.app"_s, FileCategory::application},
            {u"~/Library/Caches/com.example.alpha"_s},
            {u"~/Library/Preferences/com.example.alpha.plist"_s, FileCategory::preferences},
            {u"~/Library/Preferences/ByHost/com.example.alpha.0123-ABCD.plist"_s,
             FileCategory::preferences},
            {agent, FileCategory::launchAgents},
            {idle, FileCategory::launchAgents},
            {u"/Library/Application Support/Data"_s, FileCategory::caches, u"Data 2"_s},
            {daemon, FileCategory::launchDaemons},
            {u"/Applications/Beta.app"_s, FileCategory::application},
            {u"~/Library/Application Support/Beta"_s},
            {u"/Library/Caches/Data"_s, FileCategory::caches, u"Data 3"_s},
            {u"~/Library/Containers/com.example.beta"_s}};
        QList<FileItem> items;
        for (const Planted &planted : moves) {
            const QString &macPath = planted.macPath;
            const bool file = macPath.endsWith(u".plist");
            if (!macPath.endsWith(u".app"))
                items.append(item(file ? m_mac->addTextFile(macPath, macPath.toUtf8())
                                       : addDeepFolder(macPath),
                                  planted.category, file ? 5 : 3000));
        }
        FakeMacRemovalTools::setLoadedJobs(*m_mac, {m_mac->path(agent), m_mac->path(daemon)});
        FileItem receiptItem = item(receipt, FileCategory::receipts);
        receiptItem.packageID = u"com.example.alpha.pkg"_s;
        FileItem shared = item(addDeepFolder(u"/Library/Application Support/Shared"_s));
        shared.isProtected = true;
        FileItem logs = item(addDeepFolder(u"~/Library/Logs/Alpha"_s));
        logs.isSelected = false;
        const auto alpha =
            makeSession(items.mid(0, 7) + QList{receiptItem, shared, logs}, u"Alpha"_s);
        const auto beta = makeSession(
            items.mid(7) +
                QList{item(m_mac->addTextFile(u"/System/Library/Extensions/Beta.kext"_s, "k"))},
            u"Beta"_s);
        QMap<QString, QByteArray> before;
        for (const Planted &planted : moves)
            before.insert(planted.macPath, TreeFingerprint::of(m_mac->path(planted.macPath)));
        const QStringList entriesBefore = m_mac->entries();
        QProcess alphaRunning;
        alphaRunning.start(m_mac->path(u"/Applications/Alpha.app/Contents/MacOS/Alpha"_s),
                           {u"300"_s});
        QVERIFY(alphaRunning.waitForStarted());

        uninstall({alpha, beta});

        QCOMPARE(m_shell->batches().size(), 1);
        QTRY_COMPARE(alphaRunning.state(), QProcess::NotRunning);
        QCOMPARE(
            messages(*alpha),
            QStringList({
                u"Starting uninstall process for Alpha"_s,
                u"Application quit successfully"_s,
                u"Unloaded: "_s + agent,
                u"Launch agent was not loaded: "_s + idle,
                u"Moved to trash: /Applications/Alpha.app"_s,
                u"Moved to trash: ~/Library/Caches/com.example.alpha"_s,
                u"Moved to trash: ~/Library/Preferences/com.example.alpha.plist"_s,
                u"Moved to trash: ~/Library/Preferences/ByHost/com.example.alpha.0123-ABCD.plist"_s,
                u"Moved to trash: "_s + agent,
                u"Moved to trash: "_s + idle,
                u"Asking for administrator permission for 3 items"_s,
                u"Moved to trash (admin): /Library/Application Support/Data"_s,
                u"Moved to trash (admin): "_s + daemon,
                u"Forgot installer receipt: com.example.alpha.pkg"_s,
                u"⚠️ Skipped 1 files that are part of macOS (cannot be deleted)"_s,
                u"✓ Uninstall completed. 9 items moved to the Trash, 1 protected items skipped."_s,
            }));
        QCOMPARE(
            messages(*beta),
            QStringList({
                u"Starting uninstall process for Beta"_s,
                u"App was not running or already quit"_s,
                u"Moved to trash: /Applications/Beta.app"_s,
                u"Moved to trash: ~/Library/Application Support/Beta"_s,
                u"Asking for administrator permission for 2 items"_s,
                u"Moved to trash (admin): /Library/Caches/Data"_s,
                u"Moved to trash (admin): ~/Library/Containers/com.example.beta"_s,
                u"⚠️ Skipped 1 files that are part of macOS (cannot be deleted)"_s,
                u"✓ Uninstall completed. 4 items moved to the Trash, 1 protected items skipped."_s,
            }));
        QCOMPARE(alpha->removedBytes(), 1000 + 3000 + 5 + 5 + 5 + 5 + 3000 + 5 + 10);
        QCOMPARE(beta->removedBytes(), 1000 + 3000 + 3000 + 3000);
        for (const LogEntry &entry : alpha->logs() + beta->logs())
            QVERIFY2(entry.isSuccess, qPrintable(entry.message));

        // Every entry is where it was or in the Trash under its item's new name; the receipt is
        // forgotten, and the records of the uninstall and of the helper are new.
        const QString root = m_mac->root() + u'/';
        QStringList expectedAfter;
        for (const QString &entry : entriesBefore) {
            QString moved = root + entry;
            for (const Planted &planted : moves) {
                const QString from = m_mac->path(planted.macPath);
                if (moved == from || moved.startsWith(from + u'/'))
                    moved = trash(planted.trashName) + moved.mid(from.size());
            }
            if (!moved.startsWith(receipt.chopped(6)))
                expectedAfter.append(moved.mid(root.size()));
        }
        expectedAfter.sort();
        QStringList after = m_mac->entries();
        after.removeIf([&](const QString &entry) {
            return entry.startsWith(u"Users/tester/Library/Application Support/Quenzo"_s) ||
                   entry.startsWith(u"Library/Application Support/Quenzo"_s);
        });
        QCOMPARE(after, expectedAfter);
        for (const Planted &planted : moves)
            QCOMPARE(TreeFingerprint::of(trash(planted.trashName)), before.value(planted.macPath));
        QCOMPARE(
            m_mac->calls(),
            QList<QStringList>({
                {u"/bin/launchctl"_s, u"unload"_s, m_mac->path(agent)},
                {u"/bin/launchctl"_s, u"unload"_s, m_mac->path(idle)},
                {u"/bin/launchctl"_s, u"bootout"_s, u"system"_s, m_mac->path(daemon)},
                {u"/usr/sbin/pkgutil"_s, u"--forget"_s, u"com.example.alpha.pkg"_s},
                {u"/usr/bin/defaults"_s, u"delete"_s, u"com.example.alpha"_s},
                {u"/usr/bin/defaults"_s, u"-currentHost"_s, u"delete"_s, u"com.example.alpha"_s},
                {kLsregister, u"-u"_s, m_mac->path(u"/Applications/Alpha.app"_s)},
                {kLsregister, u"-u"_s, m_mac->path(u"/Applications/Beta.app"_s)},
            }));
    }

    // One item beside the bundle, and what happens to it or around it ("late": while the prompt
    // is up). Whatever happens, a folder outside the fake Mac, the system's denied folders and
    // what the Trash held stay as they were, nothing enters the Trash but the item itself, the
    // counts and the summary agree, and root never boots out a job.
    void singleItemFightsBack_data()
    {
        QTest::addColumn<QString>("attack");
        QTest::addColumn<QString>("macPath");
        QTest::addColumn<bool>("moved"); // else it stays where it is, counted failed
        QTest::addColumn<int>("prompts");
        QTest::addColumn<QStringList>("logged"); // line starts; "!" first: no line starts so
        const auto row = [](const char *name, const QString &attack, const QString &macPath,
                            bool moved, int prompts, const QStringList &logged) {
            QTest::newRow(name) << attack << macPath << moved << prompts << logged;
        };
        const QString couldNot = u" - Couldn't be moved to the Trash"_s;
        const QString canceled = u" - Administrator permission was canceled"_s;
        const QString admin = u"Moved to trash (admin): "_s;
        const QString failed = u"Failed to remove: "_s;
        const QString user = u"Moved to trash: "_s;
        const QString notDone = u"Not done as administrator: "_s;
        const QString trashRefused = notDone + u"The Trash is not a folder"_s;
        const QString linked = notDone + u"A folder"_s;
        const QString notStopped = notDone + u"Not a launch daemon"_s;
        const QString receipt = u"/private/var/db/receipts/com.acme.writer.pkg.plist"_s;
        const QString longName = u"~/Library/Caches/"_s + FakeMac::longestName(u"Cache "_s);
        row("privileged script fails", u"fail"_s, kAdmin, false, 1,
            {failed + kAdmin + u" - Failed to remove files with admin privileges"_s});
        row("prompt cancelled", u"cancel"_s, kAdmin, false, 1, {failed + kAdmin + canceled});
        row("receipt cancelled", u"cancel"_s, receipt, false, 1, {failed + receipt + canceled});
        row("outside every allowed root", {}, u"/usr/local/bin/writer"_s, false, 0,
            {failed + u"/usr/local/bin/writer"_s + couldNot});
        row("no Trash yet, administrator", u"no trash"_s, kCache, true, 1, {admin + kCache});
        row("name of 255 bytes", {}, longName, true, 0, {user + longName});
        // "Name 2" would be 257 bytes: no move can succeed, also when retried as administrator,
        // and nothing may be lost.
        row("name of 255 bytes taken in the Trash", u"occupied"_s, longName, false, 1,
            {failed + longName + couldNot});
        row("gone, user-level", u"gone"_s, kCache, true, 0, {u"!"_s + user + kCache, u"!Asking"_s});
        row("gone, administrator's", u"gone"_s, kAdmin, true, 1, {admin + kAdmin});
        row("link to a folder, user-level", u"link"_s, kCache, true, 0, {user + kCache});
        row("link to a folder, administrator's", u"link"_s, kAdmin, true, 1, {admin + kAdmin});
        row("dangling link", u"dangling"_s, kCache, true, 0, {user + kCache});
        row("Trash is a link to another folder", u"trash link"_s, kAdmin, false, 1, {trashRefused});
        row("Trash is a link, user-level item", u"trash link"_s, kCache, false, 1, {trashRefused});
        row("Trash owned by someone else", u"trash foreign"_s, kAdmin, false, 1, {trashRefused});
        row("home's Caches is a link", u"link ~/Library/Caches"_s, kCache, false, 1, {linked});
        row("/Library/Caches is a link", u"link /Library/Caches"_s, kAdmin, false, 1, {linked});
        const QString tcc = u"/Library/Application Support/Writer/TCC.db"_s;
        row("vendor folder leads to a denied one", u"vendor link"_s, tcc, false, 1, {failed + tcc});
        row("folder swapped for a link", u"late link"_s, kAdmin + u"/state"_s, false, 1, {linked});
        row("free Trash name taken by a link", u"late trash name"_s, kAdmin, true, 1,
            {admin + kAdmin});
        row("name that is not UTF-8, and its re-encoded twin", u"not utf-8"_s,
            u"~/Library/Caches/w\uFFFD"_s, false, 0, {failed + u"~/Library/Caches/w"_s});
        row("launchctl writable by others", u"tool writable"_s, kDaemon, true, 1,
            {notDone + u"Refused to run"_s});
        row("daemon writable by others", u"daemon writable"_s, kDaemon, true, 1, {notStopped});
        row("daemon with a second link", u"daemon hard link"_s, kDaemon, true, 1, {notStopped});
        row("launch daemon that is a link", u"daemon link"_s, kDaemon, true, 1, {admin + kDaemon});
        row("daemon list outside the system's daemons", u"daemon elsewhere"_s,
            u"/Library/LaunchAgents/com.acme.writer.plist"_s, true, 1, {notStopped});
        row("per-user temporary folder stays with the user", u"darwin temp"_s,
            u"/private/var/folders/xy/T/com.acme.writer"_s, true, 0,
            {u"Moved to trash: /private/var/folders/xy/T/com.acme.writer"_s});
        row("another user's home with the same start", {},
            u"/Users/tester2/Library/Caches/com.acme.writer"_s, false, 0,
            {u"Asking for administrator permission for 1 items"_s});
    }

    void singleItemFightsBack()
    {
        QFETCH(QString, attack);
        QFETCH(QString, macPath);
        QFETCH(bool, moved);
        QFETCH(int, prompts);
        QFETCH(QStringList, logged);
        QTemporaryDir outside;
        m_mac->addTextFile(u"/Library/Application Support/com.apple.TCC/TCC.db"_s, "tcc");
        const QString denied = m_mac->path(u"/Library/Application Support/com.apple.TCC"_s);
        const QString victim = outside.filePath(u"victim"_s);
        QVERIFY(QDir().mkpath(victim + u"/com.acme.writer"_s));
        const QString itemPath = m_mac->path(macPath);
        const QString name = itemPath.section(u'/', -1);
        const bool daemon = attack == u"tool writable" || attack.startsWith(u"daemon ");
        if (attack == u"dangling")
            m_mac->addSymlink(macPath, u"nowhere"_s);
        else if (attack == u"link" || attack == u"daemon link")
            m_mac->addSymlink(macPath, daemon ? denied + u"/TCC.db"_s : victim);
        else if (attack == u"not utf-8")
            m_mac->addTextFile(macPath, "twin"); // U+FFFD encoded: what a lossy name points at
        else if (daemon || macPath.startsWith(u"/private/var/db/"))
            m_mac->addTextFile(macPath, "<plist/>");
        else if (attack != u"vendor link" && attack != u"gone")
            addDeepFolder(macPath);
        auto plantLink = [&](const QString &folder, const QString &target) {
            QVERIFY(QDir().rename(folder, folder + u".real"_s));
            QVERIFY(QFile::link(target, folder));
        };
        Run run;
        if (attack == u"fail" || attack == u"cancel")
            run.behaviour = attack == u"fail" ? Behaviour::fail : Behaviour::cancel;
        else if (attack == u"no trash") {
            QVERIFY(QDir(trash()).removeRecursively());
            m_unwritable.insert(u"*"_s);
        } else if (attack == u"occupied") {
            m_mac->addTextFile(u"~/.Trash/"_s + name, "older");
        } else if (attack == u"trash link") {
            QVERIFY(QDir(trash()).removeRecursively());
            QVERIFY(QFile::link(victim, trash()));
        } else if (attack == u"trash foreign") {
            QVERIFY(::chown(QFile::encodeName(trash()).constData(), 65534, 65534) == 0);
        } else if (attack.startsWith(u"link ")) {
            const QString folder = m_mac->path(attack.mid(5));
            QVERIFY(QDir().rename(folder + u"/com.acme.writer"_s,
                                  victim + u"/com.acme.writer/moved"_s));
            plantLink(folder, victim);
        } else if (attack == u"vendor link") {
            m_mac->addSymlink(u"/Library/Application Support/Writer"_s, u"com.apple.TCC"_s);
        } else if (attack == u"not utf-8") {
            // The real file whose name was read back lossily as the twin's.
            const QByteArray real = QFile::encodeName(m_mac->home()) + "/Library/Caches/w\xff";
            const int fd = ::open(real.constData(), O_WRONLY | O_CREAT, 0644);
            QVERIFY(fd >= 0 && ::write(fd, "real", 4) == 4 && ::close(fd) == 0);
        } else if (attack.endsWith(u" writable")) {
            const QString path =
                daemon && attack != u"tool writable" ? itemPath : m_mac->path(u"/bin/launchctl"_s);
            QVERIFY(
                QFile::setPermissions(path, QFile::permissions(path) | QFileDevice::WriteOther));
        } else if (attack == u"daemon hard link") {
            QCOMPARE(::link(QFile::encodeName(itemPath).constData(),
                            QFile::encodeName(victim + u"/label.plist"_s).constData()),
                     0);
        } else if (attack == u"darwin temp") {
            m_mac->setDarwinUserDirectories(u"/private/var/folders/xy/C"_s,
                                            u"/private/var/folders/xy/T"_s);
        }
        if (daemon)
            FakeMacRemovalTools::setLoadedJobs(*m_mac, {itemPath});
        const QByteArray before = TreeFingerprint::of(itemPath);
        const QByteArray victimBefore = TreeFingerprint::of(victim);
        const QByteArray deniedBefore = TreeFingerprint::of(denied);
        const QStringList trashBefore = TreeFingerprint::entries(trash());
        const QByteArray occupant = TreeFingerprint::of(trash(name));

        FileItem selected =
            item(itemPath, daemon ? FileCategory::launchDaemons : FileCategory::caches);
        if (macPath.startsWith(u"/private/var/db/")) {
            selected.category = FileCategory::receipts;
            selected.packageID = u"com.acme.writer.pkg"_s;
        }
        const auto session = makeSession({selected});
        run.duringPrompt = [&] {
            if (attack == u"late link")
                plantLink(itemPath.section(u'/', 0, -2), victim + u"/com.acme.writer"_s);
            else if (attack == u"late trash name")
                QVERIFY(QFile::link(victim, trash(name)));
        };
        uninstall({session}, std::move(run));

        const QStringList lines = messages(*session);
        for (const QString &start : logged) {
            const bool absent = start.startsWith(u'!');
            QVERIFY2(std::any_of(lines.cbegin(), lines.cend(),
                                 [&](const QString &line) {
                                     return line.startsWith(start.mid(absent ? 1 : 0));
                                 }) != absent,
                     qPrintable(start + u"\n\n"_s + lines.join(u'\n')));
        }
        QCOMPARE(m_shell->batches().size(), prompts);
        QCOMPARE(TreeFingerprint::of(victim), victimBefore);
        QCOMPARE(TreeFingerprint::of(denied), deniedBefore);
        for (const QStringList &call : m_mac->calls())
            QVERIFY2(!call.contains(u"bootout"_s), qPrintable(call.join(u' ')));
        // A refused Trash refuses the bundle too. Bytes are counted for what was removed only:
        // the bundle (1000), then the item (10).
        const bool bundleMoved = !attack.startsWith(u"trash"_s);
        const int failedCount = (moved ? 0 : 1) + (bundleMoved ? 0 : 1);
        QCOMPARE(session->failedCount(), failedCount);
        QCOMPARE(session->removedBytes(), (moved ? 10 : 0) + (bundleMoved ? 1000 : 0));
        const QString summary = u"⚠ Uninstall completed with errors. %1 succeeded, %2 failed, 0 "
                                u"skipped."_s;
        QCOMPARE(lines.constLast(),
                 failedCount
                     ? summary.arg(2 - failedCount).arg(failedCount)
                     : u"✓ Uninstall completed successfully. 2 items moved to the Trash."_s);
        QStringList trashAfter = TreeFingerprint::entries(trash());
        if (moved) {
            const QString arrived = attack == u"late trash name" ? u"com.acme 2.writer"_s : name;
            QVERIFY(!QFileInfo::exists(itemPath) && !QFileInfo(itemPath).isSymLink());
            QCOMPARE(TreeFingerprint::of(trash(arrived)), before);
        } else {
            QCOMPARE(TreeFingerprint::of(trash(name)), occupant); // nothing overwritten
            if (attack != u"late link")
                QCOMPARE(TreeFingerprint::of(itemPath), before);
        }
        // Nothing but the bundle and the item (with what it holds) entered the Trash.
        trashAfter.removeIf([&](const QString &entry) {
            return entry.startsWith(u"Writer.app"_s) || (moved && entry.startsWith(name));
        });
        if (attack != u"late trash name" && !attack.startsWith(u"trash"))
            QCOMPARE(trashAfter, trashBefore);
        if (attack == u"not utf-8") // Qt itself could not remove it
            QCOMPARE(
                ::unlink((QFile::encodeName(m_mac->home()) + "/Library/Caches/w\xff").constData()),
                0);
    }

    // Far past any argument-length limit, in one prompt.
    void fiveThousandAdministratorItemsInOnePrompt()
    {
        QList<FileItem> items;
        for (int i = 0; i < 5000; ++i)
            items.append(item(m_mac->addTextFile(u"/Library/Caches/item-%1"_s.arg(i), "x")));
        const auto session = makeSession(items);
        uninstall({session});
        QCOMPARE(m_shell->batches().size(), 1);
        QCOMPARE(session->removedCount(), 5001);
        QVERIFY(QFileInfo::exists(trash(u"item-4999"_s)));
    }
};

QTEST_GUILESS_MAIN(tst_RemovalFaults)
#include "tst_RemovalFaults.moc"
