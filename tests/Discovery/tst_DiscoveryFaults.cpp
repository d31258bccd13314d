// SPDX-License-Identifier: MIT
// Discovery on fake Macs that fight back: folders it may not read, link loops and very long
// names in measured folders, a 50 MB launchd job.
// Discovery must finish, report what it could read and nothing it could not.
#include "Discovery/FileDiscoveryService.h"
#include "support/DiscoveryScene.h"
#include "support/LongNames.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

#include "support/UnprivilegedFiles.h"

using namespace Qt::StringLiterals;

namespace {
constexpr qint64 kFiftyMegabytes = 50 * 1024 * 1024;

const QFile::Permissions kOpen = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                 QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther |
                                 QFile::ExeOther;
} // namespace

class tst_DiscoveryFaults : public QObject
{
    Q_OBJECT

private slots:
    // The fake Macs of these tests are read as "nobody": folders must be open to others.
    void initTestCase() { ::umask(022); }

    void unreadableFolders();
    void symbolicLinkLoopsAreNotFollowed();
    void longNamesAndDeepPathsAreMeasured();
    void hugeLaunchdJobIsJudgedByItsName();
};

void tst_DiscoveryFaults::unreadableFolders()
{
    DiscoveryScene scene;
    FakeMac &mac = scene.mac();
    QVERIFY(QFile::setPermissions(mac.root(), kOpen));
    const AppInfo writer = scene.addApp(u"/Applications/Writer.app"_s, u"com.acme.writer"_s);
    mac.addFile(u"~/Library/Caches/com.acme.writer/data"_s, 1000);
    mac.addFile(u"~/Library/Application Support/com.acme.writer/state"_s, 10);
    const QString support = mac.path(u"~/Library/Application Support"_s);
    QVERIFY(QFile::setPermissions(support, {}));

    QList<FileItem> items;
    {
        UnprivilegedFiles unprivileged;
        // Listing, not access(2): that one checks the real user, who is root.
        QVERIFY(QDir(support).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).isEmpty());
        items = FileDiscoveryService().discoverFiles(writer);
    }
    QVERIFY(QFile::setPermissions(support, kOpen));

    QCOMPARE(scene.macPaths(items),
             QStringList({u"/Applications/Writer.app"_s, u"~/Library/Caches/com.acme.writer"_s}));
    QCOMPARE(items.at(1).size, 1000);
}

void tst_DiscoveryFaults::symbolicLinkLoopsAreNotFollowed()
{
    DiscoveryScene scene;
    FakeMac &mac = scene.mac();
    const AppInfo writer = scene.addApp(u"/Applications/Writer.app"_s, u"com.acme.writer"_s);
    for (const QString &folder :
         {u"~/Library/Caches/com.acme.writer"_s, u"~/Library/Logs/com.acme.writer"_s})
        mac.addFile(folder + u"/sub/data"_s, 1000);
    const QString loops = u"~/Library/Caches/com.acme.writer"_s;
    mac.addSymlink(loops + u"/sub/self"_s, u"."_s);
    mac.addSymlink(loops + u"/sub/up"_s, u".."_s);
    mac.addSymlink(loops + u"/a"_s, u"b"_s);
    mac.addSymlink(loops + u"/b"_s, u"a"_s);

    const QList<FileItem> items = FileDiscoveryService().discoverFiles(writer);

    const FileItem *withLoops = scene.find(items, loops);
    const FileItem *plain = scene.find(items, u"~/Library/Logs/com.acme.writer"_s);
    QVERIFY(withLoops && plain);
    QCOMPARE(plain->size, 1000);
    // Each link adds at most its own few bytes: ".", "..", "b", "a".
    QCOMPARE(withLoops->size, 1000 + 1 + 2 + 1 + 1);
}

void tst_DiscoveryFaults::longNamesAndDeepPathsAreMeasured()
{
    DiscoveryScene scene;
    FakeMac &mac = scene.mac();
    const AppInfo writer = scene.addApp(u"/Applications/Writer.app"_s, u"com.acme.writer"_s);
    const QString cache = u"~/Library/Caches/com.acme.writer"_s;
    mac.addFile(cache + u'/' + LongNames::name255(u"entry-"_s), 300);
    const QString deepFile = mac.addFile(LongNames::deepBelow(mac, cache) + u"/leaf"_s, 700);
    QVERIFY(deepFile.toUtf8().size() > 1000);

    const QList<FileItem> items = FileDiscoveryService().discoverFiles(writer);

    const FileItem *found = scene.find(items, cache);
    QVERIFY(found);
    QCOMPARE(found->size, 1000);
}

void tst_DiscoveryFaults::hugeLaunchdJobIsJudgedByItsName()
{
    DiscoveryScene scene;
    FakeMac &mac = scene.mac();
    const AppInfo writer = scene.addApp(u"/Applications/Writer.app"_s, u"com.acme.writer"_s);
    const QByteArray head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">"
                            "<dict><key>Label</key><string>com.acme.writer.sync</string>"
                            "<key>Padding</key><string>";
    const QByteArray tail = "</string></dict></plist>\n";
    const QByteArray huge =
        head + QByteArray(kFiftyMegabytes - head.size() - tail.size(), 'a') + tail;
    // Named after the app: found by its name, the contents never parsed.
    mac.addTextFile(u"~/Library/LaunchAgents/com.acme.writer.sync.plist"_s, huge);
    // Named otherwise: its label would match, but a job this large is not read at all.
    mac.addTextFile(u"/Library/LaunchDaemons/org.example.sync.plist"_s, huge);
    // The same label in a job of ordinary size is read and matched.
    mac.addPlist(u"/Library/LaunchAgents/org.example.small.plist"_s,
                 QVariantMap{{u"Label"_s, u"com.acme.writer.sync"_s}});

    const QList<FileItem> items = FileDiscoveryService().discoverFiles(writer);

    const FileItem *named =
        scene.find(items, u"~/Library/LaunchAgents/com.acme.writer.sync.plist"_s);
    QVERIFY(named);
    QCOMPARE(named->size, kFiftyMegabytes);
    QVERIFY(scene.find(items, u"/Library/LaunchAgents/org.example.small.plist"_s));
    QVERIFY(!scene.find(items, u"/Library/LaunchDaemons/org.example.sync.plist"_s));
}

QTEST_GUILESS_MAIN(tst_DiscoveryFaults)
#include "tst_DiscoveryFaults.moc"
