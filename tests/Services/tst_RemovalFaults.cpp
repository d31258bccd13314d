// SPDX-License-Identifier: MIT
// Uninstalls on fake Macs that fight back: an item gone before the uninstall, no Trash yet, a
// Trash on another file system, names of 255 bytes with paths past 1,000 bytes below them.
// Every session completes, the outcome is logged as for any item, and no file is ever lost.
#include "Platform/SystemLayout.h"
#include "Services/AuthorizationService.h"
#include "Services/FileDiscoveryService.h"
#include "Services/UninstallService.h"
#include "support/FakeMac.h"
#include "support/FakeMacRemovalTools.h"
#include "support/FakePrivilegedShell.h"
#include "support/TreeFingerprint.h"

#include <QDir>
#include <QFutureWatcher>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {
const QString kCache = u"~/Library/Caches/com.acme.writer"_s;

// A name of exactly 255 bytes in UTF-8, without an extension.
QString longName()
{
    QString name = u"Cache "_s + QString(100, u'ö');
    while (name.toUtf8().size() < 255)
        name.append(u'x');
    return name;
}

QStringList messages(const UninstallSession &session)
{
    QStringList result;
    for (const LogEntry &entry : session.logs())
        result.append(entry.message);
    return result;
}

dev_t deviceOf(const QString &path)
{
    struct stat info
    {};
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? info.st_dev : dev_t(0);
}
} // namespace

class tst_RemovalFaults : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<FakeMac> m_mac;
    QString m_bundle;

    QString trash(const QString &name = {}) const
    {
        return m_mac->home() + u"/.Trash"_s + (name.isEmpty() ? QString() : u'/' + name);
    }

    // A folder with a file, and a chain of folders reaching past 1,000 bytes of path.
    QString addDeepFolder(const QString &macPath)
    {
        m_mac->addTextFile(macPath + u"/state.json"_s, "{\"id\": 7}");
        QString deep = macPath;
        while (m_mac->path(deep).toUtf8().size() < 1000)
            deep += u'/' + QString(50, u'd');
        m_mac->addTextFile(deep + u"/leaf"_s, "deep");
        return m_mac->path(macPath);
    }

    QSharedPointer<UninstallSession> makeSession(const QList<FileItem> &items)
    {
        AppInfo app;
        app.name = u"Writer.app"_s;
        app.bundleIdentifier = u"com.acme.writer"_s;
        app.bundlePath = m_bundle;
        auto session = QSharedPointer<UninstallSession>::create(app);
        session->setDiscoveredFiles(items);
        session->setStatus(UninstallStatus::ready());
        return session;
    }

    static FileItem item(const QString &path)
    {
        FileItem file;
        file.path = path;
        file.category = FileCategory::caches;
        file.size = 10;
        return file;
    }

    static void uninstall(const QSharedPointer<UninstallSession> &session,
                          std::function<bool(const QString &)> isWritable = {})
    {
        UninstallService::Dependencies dependencies;
        dependencies.authorization = std::make_shared<const AuthorizationService>(
            std::make_shared<const FakePrivilegedShell>());
        dependencies.isWritable = std::move(isWritable);
        UninstallService service(dependencies);
        QFutureWatcher<void> watcher;
        QSignalSpy finished(&watcher, &QFutureWatcher<void>::finished);
        watcher.setFuture(service.uninstall({session}));
        QVERIFY(finished.wait(60'000));
        QCOMPARE(session->status(), UninstallStatus::completed());
    }

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_mac = std::make_unique<FakeMac>(m_dir->path());
        m_mac->activate();
        FakeMacRemovalTools::install(*m_mac);
        FakeMac::App app;
        app.path = u"/Applications/Writer.app"_s;
        app.identifier = u"com.acme.writer"_s;
        app.executable = u"Writer"_s;
        m_bundle = m_mac->addApp(app);
        m_mac->addFolder(u"~/.Trash"_s);
    }

    void cleanup()
    {
        m_mac.reset();
        m_dir.reset();
        SystemLayout::reset();
    }

    void itemGoneBeforeUninstallCountsAsRemoved()
    {
        const QString cache = addDeepFolder(kCache);
        AppInfo app = makeSession({})->appInfo();
        const QList<FileItem> found = FileDiscoveryService().discoverFiles(app);
        QVERIFY(std::any_of(found.cbegin(), found.cend(),
                            [&](const FileItem &file) { return file.path == cache; }));
        QVERIFY(QDir(cache).removeRecursively());
        const auto session = makeSession(found);

        uninstall(session);

        QCOMPARE(session->removedCount(), int(found.size()));
        QCOMPARE(session->failedCount(), 0);
        QVERIFY(!messages(*session).join(u'\n').contains(u"com.acme.writer"_s));
        QCOMPARE(messages(*session).last(),
                 u"✓ Uninstall completed successfully. %1 items moved to the Trash."_s.arg(
                     found.size()));
    }

    void trashNotThereYet_data()
    {
        QTest::addColumn<bool>("userMayMove");
        QTest::newRow("user-level move") << true;
        QTest::newRow("administrator move") << false;
    }

    void trashNotThereYet()
    {
        QFETCH(bool, userMayMove);
        QVERIFY(QDir(trash()).removeRecursively());
        const QString cache = addDeepFolder(kCache);
        const QByteArray before = TreeFingerprint::of(cache);
        const auto session = makeSession({item(cache)});

        uninstall(session, [userMayMove](const QString &) { return userMayMove; });

        // Never lost: in the Trash, or where it was, unchanged.
        const QByteArray moved = TreeFingerprint::of(trash(u"com.acme.writer"_s));
        QVERIFY(moved == before || TreeFingerprint::of(cache) == before);
        QCOMPARE(session->removedCount(), 1);
        QCOMPARE(moved, before);
    }

    void trashOnAnotherFileSystem()
    {
        QTemporaryDir elsewhere(u"/dev/shm/quenzo-trash-XXXXXX"_s);
        if (!elsewhere.isValid() || deviceOf(elsewhere.path()) == deviceOf(m_mac->home()))
            QSKIP("no second file system at /dev/shm");
        QVERIFY(QDir(trash()).removeRecursively());
        QVERIFY(QFile::link(elsewhere.path(), trash()));
        const QString cache = addDeepFolder(kCache);
        const QByteArray before = TreeFingerprint::of(cache);
        const auto session = makeSession({item(cache)});

        uninstall(session);

        QVERIFY(messages(*session).contains(
            u"Moved to trash (admin): ~/Library/Caches/com.acme.writer"_s));
        QCOMPARE(session->removedCount(), 1);
        QVERIFY(!QFileInfo::exists(cache));
        QCOMPARE(TreeFingerprint::of(elsewhere.path() + u"/com.acme.writer"_s), before);
    }

    void longNameInTheTrash_data()
    {
        QTest::addColumn<bool>("nameTaken");
        QTest::newRow("free name") << false;
        // "Name 2" would be 257 bytes: no move can succeed, and nothing may be lost.
        QTest::newRow("name taken in the Trash") << true;
    }

    void longNameInTheTrash()
    {
        QFETCH(bool, nameTaken);
        const QString name = longName();
        const QString folder = addDeepFolder(u"~/Library/Caches/"_s + name);
        const QByteArray before = TreeFingerprint::of(folder);
        QByteArray occupant;
        if (nameTaken)
            occupant = TreeFingerprint::of(m_mac->addTextFile(u"~/.Trash/"_s + name, "older"));
        const auto session = makeSession({item(folder)});

        uninstall(session);

        if (!nameTaken) {
            QCOMPARE(session->removedCount(), 1);
            QCOMPARE(TreeFingerprint::of(trash(name)), before);
            return;
        }
        QCOMPARE(session->failedCount(), 1);
        QCOMPARE(TreeFingerprint::of(folder), before);
        QCOMPARE(TreeFingerprint::of(trash(name)), occupant);
        QVERIFY(messages(*session).contains(u"Failed to remove: ~/Library/Caches/"_s + name +
                                            u" - Couldn't be moved to the Trash"_s));
    }
};

QTEST_GUILESS_MAIN(tst_RemovalFaults)
#include "tst_RemovalFaults.moc"
