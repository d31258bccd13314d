// SPDX-License-Identifier: MIT
// Uninstalls of single items that fight back: items the policy refuses, links, vanished items, no
// Trash yet, names of 255 bytes with paths past 1,000 bytes below them, and what a hostile
// program of the user's plants before the uninstall or while the prompt is up. Every session
// completes, the outcome is logged as for any item, and no file is ever lost or moved anywhere
// but into the user's Trash.
#include "Platform/SystemLayout.h"
#include "Platform/TrashMover.h"
#include "Removal/AuthorizationService.h"
#include "Removal/UninstallService.h"
#include "fakemac/FakeMacRemovalTools.h"
#include "fakemac/FakePrivilegedShell.h"
#include "fakemac/TreeFingerprint.h"
#include "support/LongNames.h"
#include "support/SessionRun.h"
#include "support/TemporaryFakeMac.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {
using SessionRun::item;
using SessionRun::messages;

const QString kCache = u"~/Library/Caches/com.acme.writer"_s;

// A user-level move that the user's rights cannot do.
class RefusingTrashMover : public TrashMover
{
public:
    bool moveToTrash(const QString &, QString *error, QString *) const override
    {
        *error = u"Permission denied"_s;
        return false;
    }
};
} // namespace

Q_DECLARE_METATYPE(FakePrivilegedShell::Behaviour)

class tst_RemovalFaults : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<TemporaryFakeMac> m_mac;
    QString m_bundle;
    std::shared_ptr<FakePrivilegedShell> m_shell;

    QString trash(const QString &name = {}) const
    {
        return name.isEmpty() ? m_mac->home() + u"/.Trash"_s : m_mac->trash(name);
    }

    // A folder with a file, and a chain of folders reaching past 1,000 bytes of path.
    QString addDeepFolder(const QString &macPath)
    {
        m_mac->addTextFile(macPath + u"/state.json"_s, "{\"id\": 7}");
        m_mac->addTextFile(LongNames::deepBelow(*m_mac, macPath) + u"/leaf"_s, "deep");
        return m_mac->path(macPath);
    }

    // The bundle first, then `items`.
    QSharedPointer<UninstallSession> makeSession(const QList<FileItem> &items)
    {
        AppInfo app;
        app.name = u"Writer.app"_s;
        app.bundleIdentifier = u"com.acme.writer"_s;
        app.bundlePath = m_bundle;
        return SessionRun::readySession(
            app, QList{item(m_bundle, FileCategory::application, 1000)} + items);
    }

    void uninstall(
        const QSharedPointer<UninstallSession> &session,
        std::function<bool(const QString &)> isWritable = {},
        FakePrivilegedShell::Behaviour behaviour = FakePrivilegedShell::Behaviour::runAsCaller,
        std::shared_ptr<const TrashMover> mover = {}, std::function<void()> duringPrompt = {})
    {
        m_shell = std::make_shared<FakePrivilegedShell>(behaviour);
        m_shell->duringPrompt = std::move(duringPrompt);
        UninstallService::Dependencies dependencies;
        dependencies.authorization =
            std::make_shared<const AuthorizationService>(m_shell, FakePrivilegedShell::helper());
        dependencies.isWritable = std::move(isWritable);
        dependencies.trash = std::move(mover);
        UninstallService service(dependencies);
        QVERIFY(SessionRun::toCompletion(service, {session}));
    }

private slots:
    void init()
    {
        m_mac = std::make_unique<TemporaryFakeMac>();
        QVERIFY(m_mac->isValid());
        FakeMacRemovalTools::install(*m_mac);
        m_bundle = m_mac->addFolder(u"/Applications/Writer.app"_s);
    }

    void cleanup() { m_mac.reset(); }

    void refusedItemStaysInPlace_data()
    {
        QTest::addColumn<QString>("macPath");
        QTest::addColumn<FakePrivilegedShell::Behaviour>("behaviour");
        QTest::addColumn<QString>("reason");
        QTest::addColumn<int>("shellRuns");
        const QString notMoved = u"Couldn't be moved to the Trash"_s;
        QTest::newRow("privileged script fails")
            << u"/Library/Application Support/Writer"_s << FakePrivilegedShell::Behaviour::fail
            << u"Failed to remove files with admin privileges: "_s +
                   FakePrivilegedShell::failureMessage()
            << 1;
        QTest::newRow("outside every allowed root")
            << u"/usr/local/bin/writer"_s << FakePrivilegedShell::Behaviour::runAsCaller << notMoved
            << 0;
        QTest::newRow("newline in the path")
            << u"/Library/Application Support/two\nlines"_s
            << FakePrivilegedShell::Behaviour::runAsCaller << notMoved << 0;
    }

    void refusedItemStaysInPlace()
    {
        QFETCH(QString, macPath);
        QFETCH(FakePrivilegedShell::Behaviour, behaviour);
        QFETCH(QString, reason);
        QFETCH(int, shellRuns);
        const QString refused = addDeepFolder(macPath);
        const QByteArray before = TreeFingerprint::of(refused);
        const auto session = makeSession({item(refused, FileCategory::other)});
        uninstall(session, {}, behaviour);
        QCOMPARE(m_shell->batches().size(), shellRuns);
        QCOMPARE(session->failedCount(), 1);
        QCOMPARE(TreeFingerprint::of(refused), before);
        QVERIFY(messages(*session).contains(
            u"Failed to remove: "_s + SystemLayout::displayPath(refused) + u" - "_s + reason));
        QCOMPARE(messages(*session).constLast(),
                 u"⚠ Uninstall completed with errors. 1 succeeded, 1 failed, 0 skipped."_s);
    }

    void symbolicLinkMovesAsLink()
    {
        const QString target = addDeepFolder(u"/Users/Shared/Writer"_s);
        const QByteArray targetContent = TreeFingerprint::of(target);
        const QString userLink = m_mac->addSymlink(u"~/Library/Caches/com.acme.writer"_s, target);
        const QString adminLink = m_mac->addSymlink(u"/Library/Application Support/Writer"_s,
                                                    u"../../Users/Shared/Writer"_s);
        const auto session = makeSession({item(userLink), item(adminLink)});
        uninstall(session);
        QCOMPARE(session->removedCount(), 3);
        QCOMPARE(QFileInfo(trash(u"com.acme.writer"_s)).symLinkTarget(), target);
        QVERIFY(QFileInfo(trash(u"Writer"_s)).isSymLink());
        QCOMPARE(TreeFingerprint::of(target), targetContent);
    }

    void vanishedItemsCountAsRemoved()
    {
        const auto session = makeSession({item(m_mac->path(u"~/Library/Caches/gone"_s)),
                                          item(m_mac->path(u"/Library/Caches/gone"_s))});
        uninstall(session);
        QCOMPARE(session->removedCount(), 3);
        QVERIFY(!messages(*session).contains(u"Moved to trash: ~/Library/Caches/gone"_s));
        // The user's own item that is gone is not taken to the prompt.
        QVERIFY(messages(*session).contains(u"Asking for administrator permission for 1 items"_s));
        QVERIFY(
            messages(*session).contains(u"Moved to trash (admin): "_s + u"/Library/Caches/gone"_s));
    }

    void nothingSelectedEndsWithZero()
    {
        const auto session = makeSession({});
        session->setAllSelected(false);
        uninstall(session);
        QCOMPARE(messages(*session).constLast(),
                 u"✓ Uninstall completed successfully. 0 items moved to the Trash."_s);
        QVERIFY(m_shell->batches().isEmpty());
        QVERIFY(QFileInfo::exists(m_bundle));
    }

    void itemArrivesUnchanged_data()
    {
        QTest::addColumn<QString>("macPath");
        QTest::addColumn<QString>("trashIs"); // "missing" or empty
        QTest::addColumn<bool>("userMayMove");
        QTest::addColumn<bool>("userMoveFails");
        QTest::addColumn<QString>("logged");
        const QString user = u"Moved to trash: "_s;
        const QString admin = u"Moved to trash (admin): "_s;
        QTest::newRow("no Trash yet, administrator")
            << kCache << u"missing"_s << false << false << admin;
        QTest::newRow("user-level move fails: retried as administrator")
            << kCache << QString() << true << true << admin;
        QTest::newRow("name of 255 bytes")
            << u"~/Library/Caches/"_s + LongNames::name255(u"Cache "_s) << QString() << true
            << false << user;
    }

    void itemArrivesUnchanged()
    {
        QFETCH(QString, macPath);
        QFETCH(QString, trashIs);
        QFETCH(bool, userMayMove);
        QFETCH(bool, userMoveFails);
        QFETCH(QString, logged);
        if (!trashIs.isEmpty())
            QVERIFY(QDir(trash()).removeRecursively());
        const QString folder = addDeepFolder(macPath);
        const QByteArray before = TreeFingerprint::of(folder);
        const auto session = makeSession({item(folder)});

        uninstall(
            session, [userMayMove](const QString &) { return userMayMove; },
            FakePrivilegedShell::Behaviour::runAsCaller,
            userMoveFails ? std::make_shared<RefusingTrashMover>() : nullptr);

        QVERIFY(messages(*session).contains(logged + macPath));
        QCOMPARE(session->removedCount(), 2);
        QVERIFY(!QFileInfo::exists(folder));
        QCOMPARE(TreeFingerprint::of(trash(macPath.section(u'/', -1))), before);
    }

    // What the user's own programs can plant, before the uninstall or while the prompt is up.
    // Whatever happens to the item, a folder outside the fake Mac and the system's denied
    // folders stay exactly as they were, and nothing enters the Trash but the item itself.
    void plantedAttackGainsNothing_data()
    {
        QTest::addColumn<QString>("attack");
        QTest::addColumn<QString>("macPath");
        QTest::addColumn<bool>("moved"); // else it stays where it is, counted failed
        QTest::addColumn<QString>("logged");
        const QString admin = u"/Library/Caches/com.acme.writer"_s;
        const QString trashRefused = u"Not done as administrator: The Trash is not a folder"_s;
        QTest::newRow("Trash is a link to another folder")
            << u"trash link"_s << admin << false << trashRefused;
        QTest::newRow("Trash is a link, user-level item")
            << u"trash link"_s << kCache << false << trashRefused;
        QTest::newRow("Trash owned by someone else")
            << u"trash foreign"_s << admin << false << trashRefused;
        QTest::newRow("home's Caches is a link") << u"link ~/Library/Caches"_s << kCache << false
                                                 << u"Not done as administrator: A folder"_s;
        QTest::newRow("/Library/Caches is a link") << u"link /Library/Caches"_s << admin << false
                                                   << u"Not done as administrator: A folder"_s;
        QTest::newRow("vendor folder leads to a denied one")
            << u"vendor link"_s << u"/Library/Application Support/Writer/TCC.db"_s << false
            << u"Failed to remove: /Library/Application Support/Writer/TCC.db"_s;
        QTest::newRow("folder swapped for a link during the prompt")
            << u"late link"_s << admin + u"/state"_s << false
            << u"Not done as administrator: A folder"_s;
        QTest::newRow("free Trash name taken by a link during the prompt")
            << u"late trash name"_s << admin << true << u"Moved to trash (admin): "_s + admin;
        QTest::newRow("name that is not UTF-8, and its re-encoded twin")
            << u"not utf-8"_s << u"~/Library/Caches/w\uFFFD"_s << false
            << u"Failed to remove: ~/Library/Caches/w"_s;
        QTest::newRow("launchctl writable by others")
            << u"tool writable"_s << u"/Library/LaunchDaemons/com.acme.writer.plist"_s << true
            << u"Not done as administrator: Refused to run"_s;
        const QString notStopped = u"Not done as administrator: Not a launch daemon"_s;
        QTest::newRow("launch daemon writable by others")
            << u"daemon writable"_s << u"/Library/LaunchDaemons/com.acme.writer.plist"_s << true
            << notStopped;
        QTest::newRow("launch daemon with a second link")
            << u"daemon hard link"_s << u"/Library/LaunchDaemons/com.acme.writer.plist"_s << true
            << notStopped;
        QTest::newRow("daemon list outside the system's daemons")
            << u"daemon elsewhere"_s << u"/Library/LaunchAgents/com.acme.writer.plist"_s << true
            << notStopped;
        QTest::newRow("dangling link")
            << u"dangling"_s << kCache << true << u"Moved to trash: "_s + kCache;
        QTest::newRow("per-user temporary folder stays with the user")
            << u"darwin temp"_s << u"/private/var/folders/xy/T/com.acme.writer"_s << true
            << u"Moved to trash: /private/var/folders/xy/T/com.acme.writer"_s;
        QTest::newRow("another user's home with the same start")
            << u"none"_s << u"/Users/tester2/Library/Caches/com.acme.writer"_s << false
            << u"Asking for administrator permission for 1 items"_s;
        QTest::newRow("prompt cancelled")
            << u"cancel"_s << admin << false
            << u"Failed to remove: "_s + admin + u" - Administrator permission was canceled"_s;
    }

    void plantedAttackGainsNothing()
    {
        QFETCH(QString, attack);
        QFETCH(QString, macPath);
        QFETCH(bool, moved);
        QFETCH(QString, logged);
        QTemporaryDir outside;
        m_mac->addTextFile(u"/Library/Application Support/com.apple.TCC/TCC.db"_s, "tcc");
        const QString denied = m_mac->path(u"/Library/Application Support/com.apple.TCC"_s);
        const QString victim = outside.filePath(u"victim"_s);
        QVERIFY(QDir().mkpath(victim + u"/com.acme.writer"_s));
        const QString itemPath = m_mac->path(macPath);
        const QString name = itemPath.section(u'/', -1);
        if (attack == u"dangling")
            m_mac->addSymlink(macPath, u"nowhere"_s);
        else if (attack == u"not utf-8")
            m_mac->addTextFile(macPath, "twin"); // U+FFFD encoded: what a lossy name points at
        else if (attack == u"tool writable" || attack.startsWith(u"daemon "))
            m_mac->addTextFile(macPath, "<plist/>");
        else if (attack != u"vendor link")
            addDeepFolder(macPath);
        const QString home = m_mac->home();
        auto plantLink = [&](const QString &folder, const QString &target) {
            QVERIFY(QDir().rename(folder, folder + u".real"_s));
            QVERIFY(QFile::link(target, folder));
        };
        if (attack == u"trash link") {
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
            const QByteArray real = QFile::encodeName(home) + "/Library/Caches/w\xff";
            const int fd = ::open(real.constData(), O_WRONLY | O_CREAT, 0644);
            QVERIFY(fd >= 0 && ::write(fd, "real", 4) == 4 && ::close(fd) == 0);
        } else if (attack == u"tool writable") {
            const QString tool = m_mac->path(u"/bin/launchctl"_s);
            QVERIFY(
                QFile::setPermissions(tool, QFile::permissions(tool) | QFileDevice::WriteOther));
        } else if (attack == u"daemon writable") {
            QVERIFY(QFile::setPermissions(itemPath,
                                          QFile::permissions(itemPath) | QFileDevice::WriteOther));
        } else if (attack == u"daemon hard link") {
            QCOMPARE(::link(QFile::encodeName(itemPath).constData(),
                            QFile::encodeName(victim + u"/label.plist"_s).constData()),
                     0);
        } else if (attack == u"darwin temp") {
            m_mac->setDarwinUserDirectories(u"/private/var/folders/xy/C"_s,
                                            u"/private/var/folders/xy/T"_s);
        }
        const QByteArray before = TreeFingerprint::of(itemPath);
        const QByteArray victimBefore = TreeFingerprint::of(victim);
        const QByteArray deniedBefore = TreeFingerprint::of(denied);
        const QStringList trashBefore = TreeFingerprint::entries(trash());

        FileItem selected = item(itemPath);
        if (attack == u"tool writable" || attack.startsWith(u"daemon "))
            selected.category = FileCategory::launchDaemons;
        const auto session = makeSession({selected});
        uninstall(session, {},
                  attack == u"cancel" ? FakePrivilegedShell::Behaviour::cancel
                                      : FakePrivilegedShell::Behaviour::runAsCaller,
                  {}, [&] {
                      if (attack == u"late link")
                          plantLink(itemPath.section(u'/', 0, -2), victim + u"/com.acme.writer"_s);
                      else if (attack == u"late trash name")
                          QVERIFY(QFile::link(victim, trash(name)));
                  });

        const QStringList lines = messages(*session);
        QVERIFY2(std::any_of(lines.cbegin(), lines.cend(),
                             [&](const QString &line) { return line.startsWith(logged); }),
                 qPrintable(lines.join(u'\n')));
        QCOMPARE(TreeFingerprint::of(victim), victimBefore);
        QCOMPARE(TreeFingerprint::of(denied), deniedBefore);
        // A refused Trash refuses the bundle too. Bytes are counted for what was removed only:
        // the bundle (1000), then the item (10).
        const bool bundleMoved = !attack.startsWith(u"trash"_s);
        QCOMPARE(session->failedCount(), (moved ? 0 : 1) + (bundleMoved ? 0 : 1));
        QCOMPARE(session->removedBytes(), (moved ? 10 : 0) + (bundleMoved ? 1000 : 0));
        QStringList trashAfter = TreeFingerprint::entries(trash());
        if (moved) {
            const QString arrived = attack == u"late trash name" ? u"com.acme 2.writer"_s : name;
            QVERIFY(!QFileInfo::exists(itemPath) && !QFileInfo(itemPath).isSymLink());
            QCOMPARE(TreeFingerprint::of(trash(arrived)), before);
        } else if (attack != u"late link") {
            QCOMPARE(TreeFingerprint::of(itemPath), before);
        }
        // Nothing but the bundle and the item (with what it holds) entered the Trash.
        trashAfter.removeIf([&](const QString &entry) {
            return entry.startsWith(u"Writer.app"_s) || (moved && entry.startsWith(name));
        });
        if (attack != u"late trash name" && !attack.startsWith(u"trash"))
            QCOMPARE(trashAfter, trashBefore);
        if (attack == u"not utf-8") // Qt itself could not remove it
            QCOMPARE(::unlink((QFile::encodeName(home) + "/Library/Caches/w\xff").constData()), 0);
    }

    // Root stops only a daemon whose property list is a plain file: never what a link names.
    void daemonThatIsALinkIsNotBootedOut()
    {
        const QString target = m_mac->addTextFile(u"/Users/Shared/victim.plist"_s, "<plist/>");
        FileItem daemon =
            item(m_mac->addSymlink(u"/Library/LaunchDaemons/com.acme.writer.plist"_s, target));
        daemon.category = FileCategory::launchDaemons;
        FakeMacRemovalTools::setLoadedJobs(*m_mac, {daemon.path});
        uninstall(makeSession({daemon}));
        for (const QStringList &call : m_mac->calls())
            QVERIFY2(!call.contains(u"bootout"_s), qPrintable(call.join(u' ')));
    }

    // What the helper refuses to run at all: a batch other than the one whose digest the user
    // approved (a file the user's programs rewrote while the prompt was up), or a root folder
    // the user's programs could have laid out (with tools and per-user folders of their own).
    void helperRefusesWhatWasNotApproved_data()
    {
        QTest::addColumn<QString>("fault");
        QTest::newRow("digest of another batch") << u"other digest"_s;
        QTest::newRow("no digest") << u"no digest"_s;
        QTest::newRow("root folder writable by all, even sticky") << u"open root"_s;
    }

    void helperRefusesWhatWasNotApproved()
    {
        QFETCH(QString, fault);
        const QString item = m_mac->addTextFile(u"/Library/Caches/com.acme.writer"_s, "x");
        const QByteArray batch = HelperBatch::encode(
            AuthorizationService::commands({{item, trash(u"com.acme.writer"_s)}}, {}, {}));
        QStringList arguments{u"--root"_s,   m_mac->root(), u"--home"_s,
                              m_mac->home(), u"--user"_s,   QString::number(::getuid())};
        if (fault != u"no digest"_s)
            arguments << u"--batch-sha256"_s
                      << QString::fromLatin1(AuthorizationService::batchDigest(
                             fault == u"other digest"_s ? "other"_ba : batch));
        if (fault == u"open root"_s) {
            if (::geteuid() != 0)
                QSKIP("the root folder is checked only when the helper runs as root");
            QCOMPARE(::chmod(QFile::encodeName(m_mac->root()).constData(), 01777), 0);
        }
        QProcess helper;
        helper.start(FakePrivilegedShell::helper(), arguments);
        helper.write(batch);
        helper.closeWriteChannel();
        QVERIFY(helper.waitForFinished());
        QCOMPARE(helper.exitCode(), 2);
        QVERIFY(QFileInfo::exists(item));
    }

    // Far past any argument-length limit, in one prompt.
    void fiveThousandAdministratorItemsInOnePrompt()
    {
        QList<FileItem> items;
        for (int i = 0; i < 5000; ++i)
            items.append(item(m_mac->addTextFile(u"/Library/Caches/item-%1"_s.arg(i), "x")));
        const auto session = makeSession(items);
        uninstall(session);
        QCOMPARE(m_shell->batches().size(), 1);
        QCOMPARE(session->removedCount(), 5001);
        QVERIFY(QFileInfo::exists(trash(u"item-4999"_s)));
    }

    void longNameTakenInTheTrashStays()
    {
        // "Name 2" would be 257 bytes: no move can succeed, and nothing may be lost.
        const QString name = LongNames::name255(u"Cache "_s);
        const QString folder = addDeepFolder(u"~/Library/Caches/"_s + name);
        const QByteArray before = TreeFingerprint::of(folder);
        const QByteArray occupant =
            TreeFingerprint::of(m_mac->addTextFile(u"~/.Trash/"_s + name, "older"));
        const auto session = makeSession({item(folder)});

        uninstall(session);

        QCOMPARE(session->failedCount(), 1);
        QCOMPARE(TreeFingerprint::of(folder), before);
        QCOMPARE(TreeFingerprint::of(trash(name)), occupant);
        QVERIFY(messages(*session).contains(u"Failed to remove: ~/Library/Caches/"_s + name +
                                            u" - Couldn't be moved to the Trash"_s));
    }
};

QTEST_GUILESS_MAIN(tst_RemovalFaults)
#include "tst_RemovalFaults.moc"
