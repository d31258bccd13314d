// SPDX-License-Identifier: MIT
// The service around the rules (tst_DiscoveryRules): the system tools it asks, fake Macs that
// fight back, and discoveries run side by side.
#include "Discovery/FileDiscoveryService.h"
#include "fakemac/FakeMacTools.h"
#include "support/DiscoveryScene.h"
#include "support/UnprivilegedFiles.h"

#include <QDir>
#include <QTest>
#include <QtConcurrent>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

class tst_FileDiscoveryService : public QObject
{
    Q_OBJECT

    // Every test starts with Writer installed; discovery runs for it.
    std::unique_ptr<DiscoveryScene> m_scene;
    AppInfo m_writer;

    QList<FileItem> discover() const
    {
        return FileDiscoveryService(m_scene->layout()).discoverFiles(m_writer);
    }

private slots:
    // The fake Macs are read as "nobody" below: folders must be open to others.
    void initTestCase() { ::umask(022); }
    void init()
    {
        m_scene = std::make_unique<DiscoveryScene>();
        m_writer = m_scene->addApp(u"/Applications/Writer.app"_s, u"com.acme.writer"_s);
    }

    void receiptsAndPackageTool();
    void unreadableFoldersAndHugeJobs();
    void parallelDiscoveriesAgree();
    void fullDiskAccessProbe();
};

void tst_FileDiscoveryService::receiptsAndPackageTool()
{
    FakeMac &mac = m_scene->mac();
    FakeMacTools::addPackage(mac, {u"com.acme.writer.pkg"_s, {}, true, 5000});
    FakeMacTools::addPackage(mac, {u"com.acme.writer.extras"_s, {}, false, 0});
    FakeMacTools::addPackage(mac, {u"com.apple.pkg.com.acme.writer"_s, {}, true, 1});
    mac.addFile(u"/private/var/db/receipts/com.acme.writer pkg.plist"_s, 10);
    // A package whose identifier names nothing of the app: only pkgutil ties it to the bundle.
    FakeMacTools::addPackage(mac, {u"net.installer.wr"_s, {u"/Applications/Writer.app"_s}});
    FakeMacTools::addPackage(mac, {u"net.installer.other"_s, {u"/Applications/Other.app"_s}});
    mac.addFile(u"~/Library/Caches/net.installer.wr/x"_s, 1);
    // Found only through the metadata index: outside the Applications folders.
    m_scene->addApp(u"/opt/Tools/Writer Pro.app"_s, u"com.acme.writer.pro"_s);
    mac.addFile(u"~/Library/Caches/com.acme.writer.pro/x"_s, 1);

    // The receipt with the size of its bill of materials.
    const auto receipt = [&](const QString &id, qint64 bom) {
        const QString path = u"/private/var/db/receipts/%1.plist"_s.arg(id);
        return u"[x] %1 | package=%2; size=%3"_s.arg(path, id).arg(
            QFileInfo(mac.path(path)).size() + bom);
    };
    QStringList expected{u"[x] ~/Library/Caches/net.installer.wr"_s,
                         receipt(u"com.acme.writer.extras"_s, 0),
                         receipt(u"com.acme.writer.pkg"_s, 5000) + u"; category=receipts"_s,
                         receipt(u"net.installer.wr"_s, 2048)};
    QCOMPARE(m_scene->shown(discover(), expected), expected);
    const QString query = u"kMDItemContentType == 'com.apple.application-bundle' && "
                          u"kMDItemCFBundleIdentifier == '%1*'c"_s;
    QList<QStringList> calls = mac.calls(); // in any order
    std::sort(calls.begin(), calls.end());
    QCOMPARE(calls, (QList<QStringList>{{u"/usr/bin/mdfind"_s, query.arg(u"com.acme.")},
                                        {u"/usr/bin/mdfind"_s, query.arg(u"com.acme.writer")},
                                        {u"/usr/sbin/pkgutil"_s, u"--file-info"_s,
                                         u"/Applications/Writer.app"_s}}));

    // Without the tools the package tie and the app outside the Applications folders are lost.
    QVERIFY(QFile::remove(mac.path(u"/usr/sbin/pkgutil"_s)));
    QVERIFY(QFile::remove(mac.path(u"/usr/bin/mdfind"_s)));
    expected.replace(0, u"[x] ~/Library/Caches/com.acme.writer.pro"_s);
    expected.removeLast();
    QCOMPARE(m_scene->shown(discover(), expected), expected);
}

// Read as a user: a folder the user cannot list is skipped; a job too large to read is judged
// by its name alone.
void tst_FileDiscoveryService::unreadableFoldersAndHugeJobs()
{
    FakeMac &mac = m_scene->mac();
    const auto open = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadGroup |
                      QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;
    QVERIFY(QFile::setPermissions(mac.root(), open));
    mac.addFile(u"~/Library/Caches/com.acme.writer/data"_s, 1000);
    mac.addFile(u"~/Library/Application Support/com.acme.writer/state"_s, 10);
    const QString support = mac.path(u"~/Library/Application Support"_s);
    QVERIFY(QFile::setPermissions(support, {}));
    constexpr qint64 kFiftyMegabytes = 50 * 1024 * 1024;
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
    // The same label in a job of ordinary size (XML) is read and matched.
    mac.addPlist(u"/Library/LaunchAgents/org.example.small.plist"_s,
                 QVariantMap{{u"Label"_s, u"com.acme.writer.sync"_s}});
    QList<FileItem> items;
    {
        UnprivilegedFiles unprivileged;
        // Listing, not access(2): that one checks the real user, who is root.
        QVERIFY(QDir(support).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).isEmpty());
        items = discover();
    }
    QVERIFY(QFile::setPermissions(support, open));
    const QStringList expected{
        u"[x] ~/Library/Caches/com.acme.writer | size=1000"_s,
        u"[x] ~/Library/LaunchAgents/com.acme.writer.sync.plist | size=%1"_s.arg(kFiftyMegabytes),
        u"[x] /Library/LaunchAgents/org.example.small.plist"_s};
    QCOMPARE(m_scene->shown(items, expected), expected);
}

void tst_FileDiscoveryService::parallelDiscoveriesAgree()
{
    QList<AppInfo> apps;
    for (int i = 0; i < 6; ++i) {
        const QString name = u"App%1"_s.arg(i);
        apps.append(
            m_scene->addApp(u"/Applications/%1.app"_s.arg(name), u"com.vendor%1.app%1"_s.arg(i)));
        m_scene->mac().addFile(u"~/Library/Caches/com.vendor%1.app%1/x"_s.arg(i), 10 * i);
        m_scene->mac().addFile(u"~/Library/Application Support/%1/y"_s.arg(name), i);
    }
    const FileDiscoveryService service(m_scene->layout());
    const QList<QList<FileItem>> parallel = QtConcurrent::blockingMapped(
        apps, [&service](const AppInfo &app) { return service.discoverFiles(app); });
    for (qsizetype i = 0; i < apps.size(); ++i) {
        const QStringList sequential = m_scene->macPaths(service.discoverFiles(apps.at(i)));
        QCOMPARE(m_scene->macPaths(parallel.at(i)), sequential);
        QCOMPARE(sequential.size(), 3);
    }
}

void tst_FileDiscoveryService::fullDiskAccessProbe()
{
    QVERIFY(!FileDiscoveryService(m_scene->layout()).hasFullDiskAccess());
    m_scene->mac().addFile(u"/Library/Application Support/com.apple.TCC/TCC.db"_s, 10);
    QVERIFY(FileDiscoveryService(m_scene->layout()).hasFullDiskAccess());
}

QTEST_GUILESS_MAIN(tst_FileDiscoveryService)
#include "tst_FileDiscoveryService.moc"
