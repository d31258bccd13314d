// SPDX-License-Identifier: MIT
// Discovery on fake Macs that fight back: folders it may not read, link loops and very long
// names in measured folders, a 50 MB launchd job, an executable whose header claims 4 GB.
// Discovery must finish, report what it could read and nothing it could not.
#include "Services/FileDiscoveryService.h"
#include "support/DiscoveryScene.h"
#include "support/MachOBuilder.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <QtEndian>

#include <sys/fsuid.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/UnprivilegedFiles.h"

using namespace Qt::StringLiterals;

namespace {
constexpr qint64 kFiftyMegabytes = 50 * 1024 * 1024;

void setMode(const QString &path, QFile::Permissions permissions)
{
    QVERIFY(QFile::setPermissions(path, permissions));
}

const QFile::Permissions kOpen = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                 QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther |
                                 QFile::ExeOther;

// A name of exactly 255 bytes in UTF-8, most of them two-byte letters.
QString longName(const QString &prefix)
{
    QString name = prefix + QString(100, u'ä');
    while (name.toUtf8().size() < 255)
        name.append(u'x');
    return name;
}

void patch32(QByteArray &bytes, qsizetype at, quint32 value, bool bigEndian)
{
    if (bigEndian)
        qToBigEndian(value, bytes.data() + at);
    else
        qToLittleEndian(value, bytes.data() + at);
}
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
    void executableClaimingHugeSizes_data();
    void executableClaimingHugeSizes();
};

void tst_DiscoveryFaults::unreadableFolders()
{
    DiscoveryScene scene;
    FakeMac &mac = scene.mac();
    setMode(mac.root(), kOpen);
    const AppInfo writer = scene.addApp(u"/Applications/Writer.app"_s, u"com.acme.writer"_s);
    mac.addFile(u"~/Library/Caches/com.acme.writer/data"_s, 1000);
    const QString locked = mac.addFolder(u"~/Library/Caches/com.acme.writer/locked"_s);
    mac.addFile(u"~/Library/Caches/com.acme.writer/locked/secret"_s, 5000);
    mac.addFile(u"~/Library/Application Support/com.acme.writer/state"_s, 10);
    const QString support = mac.path(u"~/Library/Application Support"_s);
    setMode(locked, {});
    setMode(support, {});

    QList<FileItem> items;
    {
        UnprivilegedFiles unprivileged;
        // Listing, not access(2): that one checks the real user, who is root.
        QVERIFY(QDir(support).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).isEmpty());
        items = FileDiscoveryService().discoverFiles(writer);
    }
    setMode(locked, kOpen);
    setMode(support, kOpen);

    QCOMPARE(scene.macPaths(items),
             QStringList({u"/Applications/Writer.app"_s, u"~/Library/Caches/com.acme.writer"_s}));
    // The locked folder counts as far as its own entry can be seen, never its contents.
    QVERIFY(items.at(1).size >= 1000);
    QVERIFY(items.at(1).size < 5000);
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
    mac.addFile(cache + u'/' + longName(u"entry-"_s), 300);
    QString deep = cache;
    while (mac.path(deep).toUtf8().size() < 1000)
        deep += u'/' + QString(60, u'd');
    const QString deepFile = mac.addFile(deep + u"/leaf"_s, 700);
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

void tst_DiscoveryFaults::executableClaimingHugeSizes_data()
{
    QTest::addColumn<bool>("universal");
    QTest::addColumn<QList<qsizetype>>("fieldsToInflate"); // offsets of 32-bit sizes
    QTest::addColumn<bool>("groupFound");
    // Thin 64-bit little-endian: sizeofcmds at 20. Universal: each architecture's size at
    // 8 + 20 * i + 12 (big-endian).
    QTest::newRow("intact thin") << false << QList<qsizetype>{} << true;
    QTest::newRow("intact universal") << true << QList<qsizetype>{} << true;
    QTest::newRow("load commands claim 4 GB") << false << QList<qsizetype>{20} << false;
    QTest::newRow("architectures claim 4 GB") << true << QList<qsizetype>{20, 40} << false;
}

void tst_DiscoveryFaults::executableClaimingHugeSizes()
{
    QFETCH(bool, universal);
    QFETCH(QList<qsizetype>, fieldsToInflate);
    QFETCH(bool, groupFound);
    DiscoveryScene scene;
    FakeMac &mac = scene.mac();
    const QString group = u"ABCDE12345.org.example.shared"_s;
    FakeMac::App app;
    app.path = u"/Applications/Writer.app"_s;
    app.identifier = u"com.acme.writer"_s;
    app.executable = u"Writer"_s;
    app.appGroups = {group};
    app.universal = universal;
    mac.addApp(app);
    mac.addFile(u"~/Library/Group Containers/"_s + group + u"/data"_s, 10);
    const QString executable = mac.path(app.path + u"/Contents/MacOS/Writer"_s);
    QFile file(executable);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QByteArray bytes = file.readAll();
    for (const qsizetype at : fieldsToInflate)
        patch32(bytes, at, 0xffffffffu, universal);
    QVERIFY(file.seek(0));
    QCOMPARE(file.write(bytes), bytes.size());
    file.close();

    const QList<FileItem> items =
        FileDiscoveryService().discoverFiles(scene.appInfo(app.path, app.identifier));

    QCOMPARE(scene.macPathOf(items.first().path), app.path);
    QCOMPARE(bool(scene.find(items, u"~/Library/Group Containers/"_s + group)), groupFound);
}

QTEST_GUILESS_MAIN(tst_DiscoveryFaults)
#include "tst_DiscoveryFaults.moc"
