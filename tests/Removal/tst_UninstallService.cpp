// SPDX-License-Identifier: MIT
#include "Platform/SystemLayout.h"
#include "Platform/TrashNaming.h"
#include "Removal/AuthorizationService.h"
#include "Removal/UninstallService.h"
#include "fakemac/FakeMacRemovalTools.h"
#include "fakemac/FakeMacTools.h"
#include "fakemac/FakePrivilegedShell.h"
#include "fakemac/TreeFingerprint.h"
#include "support/SessionRun.h"
#include "support/TemporaryFakeMac.h"

#include <QProcess>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
using SessionRun::item;
using SessionRun::messages;

const QString kLsregister = u"/System/Library/Frameworks/CoreServices.framework/Frameworks/"
                            u"LaunchServices.framework/Support/lsregister"_s;
} // namespace

class TestUninstallService : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<TemporaryFakeMac> m_mac;
    std::shared_ptr<FakePrivilegedShell> m_shell;
    QSet<QString> m_unwritable; // folders the "user" may not write

    QString path(const QString &macPath) const { return m_mac->path(macPath); }
    QString trash(const QString &name) const { return m_mac->trash(name); }

    QString addFolderWithContent(const QString &macPath)
    {
        m_mac->addTextFile(macPath + u"/state.json"_s, "{\"id\": \"" + macPath.toUtf8() + "\"}");
        m_mac->addTextFile(macPath + u"/sub/blob.bin"_s, QByteArray(3000, 'x') + macPath.toUtf8());
        return path(macPath);
    }

    std::shared_ptr<UninstallService> makeService(
        FakePrivilegedShell::Behaviour behaviour = FakePrivilegedShell::Behaviour::runAsCaller)
    {
        m_shell = std::make_shared<FakePrivilegedShell>(behaviour);
        UninstallService::Dependencies dependencies;
        dependencies.authorization =
            std::make_shared<const AuthorizationService>(m_shell, FakePrivilegedShell::helper());
        dependencies.isWritable = [this](const QString &folder) {
            return !m_unwritable.contains(folder);
        };
        return std::make_shared<UninstallService>(dependencies);
    }

    // The bundle (made when missing) first, then `extra`.
    QSharedPointer<UninstallSession> makeSession(const QString &bundleMacPath,
                                                 const QString &identifier,
                                                 const QList<FileItem> &extra)
    {
        AppInfo app;
        app.name = bundleMacPath.section(u'/', -1);
        app.bundleIdentifier = identifier;
        app.bundlePath = m_mac->addFolder(bundleMacPath);
        return SessionRun::readySession(
            app, QList{item(app.bundlePath, FileCategory::application, 1000)} + extra);
    }

    // Two apps: user-level items, administrator items, a receipt, a loaded agent and daemon,
    // a protected item, an item under /System and an unselected one.
    struct Batch
    {
        QSharedPointer<UninstallSession> alpha;
        QSharedPointer<UninstallSession> beta;
        QMap<QString, QString> moves; // item path -> expected Trash path
        QString receipt;
    };

    Batch makeBatch()
    {
        Batch batch;
        FakeMacRemovalTools::addRunnableApp(*m_mac, u"/Applications/Alpha.app"_s,
                                            u"com.example.alpha"_s);
        FakeMacRemovalTools::addRunnableApp(*m_mac, u"/Applications/Beta.app"_s,
                                            u"com.example.beta"_s);
        const QString cache = addFolderWithContent(u"~/Library/Caches/com.example.alpha"_s);
        const QString prefs =
            m_mac->addTextFile(u"~/Library/Preferences/com.example.alpha.plist"_s, "prefs");
        const QString byHost = m_mac->addTextFile(
            u"~/Library/Preferences/ByHost/com.example.alpha.0123-ABCD.plist"_s, "host prefs");
        const QString agent =
            m_mac->addTextFile(u"~/Library/LaunchAgents/com.example.alpha.agent.plist"_s, "agent");
        const QString alphaData = addFolderWithContent(u"/Library/Application Support/Data"_s);
        const QString daemon = m_mac->addTextFile(
            u"/Library/LaunchDaemons/com.example.alpha.helper.plist"_s, "daemon");
        FakeMacTools::addPackage(*m_mac, {u"com.example.alpha.pkg"_s, {}, true, 2048});
        batch.receipt = path(u"/private/var/db/receipts/com.example.alpha.pkg.plist"_s);
        const QString shared = addFolderWithContent(u"/Library/Application Support/Shared"_s);
        const QString logs = addFolderWithContent(u"~/Library/Logs/Alpha"_s);
        const QString betaData = addFolderWithContent(u"/Library/Caches/Data"_s);
        const QString betaSupport = addFolderWithContent(u"~/Library/Application Support/Beta"_s);
        const QString kext = m_mac->addTextFile(u"/System/Library/Extensions/Beta.kext"_s, "k");
        const QString container = addFolderWithContent(u"~/Library/Containers/com.example.beta"_s);
        m_unwritable.insert(path(u"~/Library/Containers"_s));
        addFolderWithContent(u"~/.Trash/Data"_s); // the first Data is already taken
        FakeMacRemovalTools::setLoadedJobs(*m_mac, {agent, daemon});

        FileItem receipt = item(batch.receipt, FileCategory::receipts);
        receipt.packageID = u"com.example.alpha.pkg"_s;
        FileItem sharedItem = item(shared, FileCategory::applicationSupport);
        sharedItem.isProtected = true;
        FileItem logsItem = item(logs, FileCategory::logs);
        logsItem.isSelected = false;
        batch.alpha = makeSession(
            u"/Applications/Alpha.app"_s, u"com.example.alpha"_s,
            {item(cache, FileCategory::caches, 3000), item(prefs, FileCategory::preferences, 5),
             item(byHost, FileCategory::preferences, 10),
             item(agent, FileCategory::launchAgents, 5),
             item(alphaData, FileCategory::applicationSupport, 3000),
             item(daemon, FileCategory::launchDaemons, 6), receipt, sharedItem, logsItem});
        batch.beta = makeSession(u"/Applications/Beta.app"_s, u"com.example.beta"_s,
                                 {item(betaData, FileCategory::caches, 3000),
                                  item(betaSupport, FileCategory::applicationSupport, 3000),
                                  item(kext, FileCategory::other, 1),
                                  item(container, FileCategory::containers, 3000)});
        const QString alphaApp = path(u"/Applications/Alpha.app"_s);
        const QString betaApp = path(u"/Applications/Beta.app"_s);
        batch.moves = {{alphaApp, trash(u"Alpha.app"_s)},
                       {cache, trash(u"com.example.alpha"_s)},
                       {prefs, trash(u"com.example.alpha.plist"_s)},
                       {byHost, trash(u"com.example.alpha.0123-ABCD.plist"_s)},
                       {agent, trash(u"com.example.alpha.agent.plist"_s)},
                       {alphaData, trash(u"Data 2"_s)},
                       {daemon, trash(u"com.example.alpha.helper.plist"_s)},
                       {betaApp, trash(u"Beta.app"_s)},
                       {betaSupport, trash(u"Beta"_s)},
                       {betaData, trash(u"Data 3"_s)},
                       {container, trash(u"com.example.beta"_s)}};
        return batch;
    }

private slots:
    void init()
    {
        m_mac = std::make_unique<TemporaryFakeMac>();
        QVERIFY(m_mac->isValid());
        m_mac->setDarwinUserDirectories(u"/private/var/folders/zz/abc/C"_s,
                                        u"/private/var/folders/zz/abc/T"_s);
        m_mac->activate();
        FakeMacRemovalTools::install(*m_mac);
        m_unwritable.clear();
    }

    void cleanup() { m_mac.reset(); }

    void batchMovesEverythingWithOnePrivilegedRun()
    {
        Batch batch = makeBatch();
        QProcess alphaRunning;
        alphaRunning.start(path(u"/Applications/Alpha.app/Contents/MacOS/Alpha"_s), {u"300"_s});
        QVERIFY(alphaRunning.waitForStarted());
        QMap<QString, QByteArray> before;
        for (auto it = batch.moves.cbegin(); it != batch.moves.cend(); ++it)
            before.insert(it.key(), TreeFingerprint::of(it.key()));
        const QStringList entriesBefore = m_mac->entries();

        auto service = makeService();
        QVERIFY(SessionRun::toCompletion(*service, {batch.alpha, batch.beta}));

        QCOMPARE(m_shell->batches().size(), 1);
        QTRY_COMPARE(alphaRunning.state(), QProcess::NotRunning);
        const QString alphaApp = path(u"/Applications/Alpha.app"_s);
        QCOMPARE(
            messages(*batch.alpha),
            QStringList({
                u"Starting uninstall process for Alpha"_s,
                u"Application quit successfully"_s,
                u"Unloaded: ~/Library/LaunchAgents/com.example.alpha.agent.plist"_s,
                u"Moved to trash: "_s + SystemLayout::displayPath(alphaApp),
                u"Moved to trash: ~/Library/Caches/com.example.alpha"_s,
                u"Moved to trash: ~/Library/Preferences/com.example.alpha.plist"_s,
                u"Moved to trash: ~/Library/Preferences/ByHost/com.example.alpha.0123-ABCD.plist"_s,
                u"Moved to trash: ~/Library/LaunchAgents/com.example.alpha.agent.plist"_s,
                u"Asking for administrator permission for 3 items"_s,
                u"Moved to trash (admin): /Library/Application Support/Data"_s,
                u"Moved to trash (admin): "_s +
                    u"/Library/LaunchDaemons/com.example.alpha.helper.plist"_s,
                u"Forgot installer receipt: com.example.alpha.pkg"_s,
                u"⚠️ Skipped 1 files that are part of macOS (cannot be deleted)"_s,
                u"✓ Uninstall completed. 8 items moved to the Trash, 1 protected items skipped."_s,
            }));
        QCOMPARE(
            messages(*batch.beta),
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
        QCOMPARE(batch.alpha->removedCount(), 8);
        QCOMPARE(batch.alpha->failedCount(), 0);
        QCOMPARE(batch.alpha->removedBytes(), 1000 + 3000 + 5 + 10 + 5 + 3000 + 6 + 10);
        QCOMPARE(batch.beta->removedCount(), 4);
        QCOMPARE(batch.beta->removedBytes(), 1000 + 3000 + 3000 + 3000);
        for (const LogEntry &entry : batch.alpha->logs() + batch.beta->logs())
            QVERIFY2(entry.isSuccess, qPrintable(entry.message));

        for (auto it = batch.moves.cbegin(); it != batch.moves.cend(); ++it) {
            QVERIFY2(!TrashNaming::itemExists(it.key()), qPrintable(it.key()));
            QCOMPARE(TreeFingerprint::of(it.value()), before.value(it.key()));
        }
        // Untouched: protected, under /System, unselected; the receipt alone is gone (forgotten).
        for (const QString &kept :
             {u"/Library/Application Support/Shared"_s, u"/System/Library/Extensions/Beta.kext"_s,
              u"~/Library/Logs/Alpha"_s, u"~/.Trash/Data/state.json"_s})
            QVERIFY2(QFileInfo::exists(path(kept)), qPrintable(kept));
        QVERIFY(!QFileInfo::exists(batch.receipt));

        // Nothing else vanished: every entry is where it was or inside the Trash under its
        // item's new name.
        QStringList expectedAfter;
        const QString root = m_mac->root() + u'/';
        for (const QString &entry : entriesBefore) {
            QString moved = root + entry;
            for (auto it = batch.moves.cbegin(); it != batch.moves.cend(); ++it) {
                if (moved == it.key() || moved.startsWith(it.key() + u'/'))
                    moved = it.value() + moved.mid(it.key().size());
            }
            if (!moved.startsWith(batch.receipt.chopped(6)))
                expectedAfter.append(moved.mid(root.size()));
        }
        expectedAfter.sort();
        // The uninstall's own record and the helper's record of what it moved are the new
        // entries.
        QStringList after = m_mac->entries();
        const QString history = path(u"~/Library/Application Support/Quenzo"_s).mid(root.size());
        const QString journal = path(u"/Library/Application Support/Quenzo"_s).mid(root.size());
        after.removeIf([&](const QString &entry) {
            return entry.startsWith(history) || entry.startsWith(journal);
        });
        QCOMPARE(after, expectedAfter);

        const QString agent = path(u"~/Library/LaunchAgents/com.example.alpha.agent.plist"_s);
        const QString daemon = path(u"/Library/LaunchDaemons/com.example.alpha.helper.plist"_s);
        QList<QStringList> expectedCalls{
            {u"/bin/launchctl"_s, u"unload"_s, agent},
            {u"/bin/launchctl"_s, u"bootout"_s, u"system"_s, daemon},
            {u"/usr/sbin/pkgutil"_s, u"--forget"_s, u"com.example.alpha.pkg"_s},
        };
        expectedCalls += QList<QStringList>{
            {u"/usr/bin/defaults"_s, u"delete"_s, u"com.example.alpha"_s},
            {u"/usr/bin/defaults"_s, u"-currentHost"_s, u"delete"_s, u"com.example.alpha"_s},
            {kLsregister, u"-u"_s, alphaApp},
            {kLsregister, u"-u"_s, path(u"/Applications/Beta.app"_s)},
        };
        QCOMPARE(m_mac->calls(), expectedCalls);
    }

    void cancelledPromptLeavesAdministratorItemsInPlace()
    {
        Batch batch = makeBatch();
        auto service = makeService(FakePrivilegedShell::Behaviour::cancel);
        QVERIFY(SessionRun::toCompletion(*service, {batch.alpha, batch.beta}));

        QCOMPARE(m_shell->batches().size(), 1);
        const QString reason = u" - Administrator permission was canceled"_s;
        const QStringList alpha = messages(*batch.alpha);
        const QStringList failures{
            u"Failed to remove: /Library/Application Support/Data"_s + reason,
            u"Failed to remove: "_s + u"/Library/LaunchDaemons/com.example.alpha.helper.plist"_s +
                reason,
            u"Failed to remove: "_s + SystemLayout::displayPath(batch.receipt) + reason,
            u"⚠️ Skipped 1 files that are part of macOS (cannot be deleted)"_s,
            u"⚠ Uninstall completed with errors. 5 succeeded, 3 failed, 1 skipped."_s,
        };
        QCOMPARE(alpha.mid(alpha.size() - failures.size()), failures);
        QVERIFY(!batch.alpha->logs().constLast().isSuccess);
        QCOMPARE(batch.alpha->removedCount(), 5);
        QCOMPARE(batch.alpha->failedCount(), 3);
        QCOMPARE(batch.alpha->removedBytes(),
                 1000 + 3000 + 5 + 10 + 5); // what stayed is not counted
        QCOMPARE(batch.beta->failedCount(), 2);
        QCOMPARE(messages(*batch.beta).constLast(),
                 u"⚠ Uninstall completed with errors. 2 succeeded, 2 failed, 1 skipped."_s);
        // Administrator items and the receipt stay; the user-level moves stay done.
        for (const QString &kept :
             {path(u"/Library/Application Support/Data"_s), path(u"/Library/Caches/Data"_s),
              path(u"~/Library/Containers/com.example.beta"_s), batch.receipt})
            QVERIFY2(QFileInfo::exists(kept), qPrintable(kept));
        QVERIFY(QFileInfo::exists(trash(u"Alpha.app"_s)));
        QVERIFY(QFileInfo::exists(trash(u"Beta"_s)));
    }
};

QTEST_GUILESS_MAIN(TestUninstallService)
#include "tst_UninstallService.moc"
