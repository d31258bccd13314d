// SPDX-License-Identifier: MIT
// Uninstalls of single items that fight back: items the policy refuses, links, vanished items, no
// Trash yet, a Trash on another file system, names of 255 bytes with paths past 1,000 bytes below
// them. Every session completes, the outcome is logged as for any item, and no file is ever lost.
#include "Platform/SystemLayout.h"
#include "Platform/TrashMover.h"
#include "Services/AuthorizationService.h"
#include "Services/UninstallService.h"
#include "support/FakeMacRemovalTools.h"
#include "support/FakePrivilegedShell.h"
#include "support/LongNames.h"
#include "support/SessionRun.h"
#include "support/TemporaryFakeMac.h"
#include "support/TreeFingerprint.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {
using SessionRun::item;
using SessionRun::messages;

const QString kCache = u"~/Library/Caches/com.acme.writer"_s;

dev_t deviceOf(const QString &path)
{
    struct stat info
    {};
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? info.st_dev : dev_t(0);
}

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
        std::shared_ptr<const TrashMover> mover = {})
    {
        m_shell = std::make_shared<FakePrivilegedShell>(behaviour);
        UninstallService::Dependencies dependencies;
        dependencies.authorization = std::make_shared<const AuthorizationService>(m_shell);
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
        QCOMPARE(m_shell->lines().size(), shellRuns);
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
        QVERIFY(m_shell->lines().isEmpty());
        QVERIFY(QFileInfo::exists(m_bundle));
    }

    void itemArrivesUnchanged_data()
    {
        QTest::addColumn<QString>("macPath");
        QTest::addColumn<QString>("trashIs"); // "missing", "elsewhere" or empty
        QTest::addColumn<bool>("userMayMove");
        QTest::addColumn<bool>("userMoveFails");
        QTest::addColumn<QString>("logged");
        const QString user = u"Moved to trash: "_s;
        const QString admin = u"Moved to trash (admin): "_s;
        QTest::newRow("no Trash yet, administrator")
            << kCache << u"missing"_s << false << false << admin;
        QTest::newRow("Trash on another file system")
            << kCache << u"elsewhere"_s << true << false << admin;
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
        QTemporaryDir elsewhere(u"/dev/shm/quenzo-trash-XXXXXX"_s);
        if (!trashIs.isEmpty())
            QVERIFY(QDir(trash()).removeRecursively());
        if (trashIs == u"elsewhere"_s) {
            if (!elsewhere.isValid() || deviceOf(elsewhere.path()) == deviceOf(m_mac->home()))
                QSKIP("no second file system at /dev/shm");
            QVERIFY(QFile::link(elsewhere.path(), trash()));
        }
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
