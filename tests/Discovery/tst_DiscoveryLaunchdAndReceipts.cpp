// SPDX-License-Identifier: MIT
// Discovery of what an app leaves outside its own folders: launchd jobs and the helpers they
// start, installer receipts, and the packages and apps the system tools know of.
#include "Discovery/FileDiscoveryService.h"
#include "fakemac/FakeMacTools.h"
#include "support/DiscoveryScene.h"

#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
QList<FileItem> discover(const AppInfo &app)
{
    return FileDiscoveryService().discoverFiles(app);
}

QVariantMap job(const QString &label, const QString &program)
{
    QVariantMap plist;
    if (!label.isEmpty())
        plist.insert(u"Label"_s, label);
    if (!program.isEmpty())
        plist.insert(u"ProgramArguments"_s, QVariantList{program, u"--run"_s});
    return plist;
}
} // namespace

class tst_DiscoveryLaunchdAndReceipts : public QObject
{
    Q_OBJECT

private slots:
    void launchItems();
    void helperToolFoundTwiceAppearsOnce();
    void receipts();
    void packagesFromThePackageTool();
    void missingToolsContributeNothing();
};

void tst_DiscoveryLaunchdAndReceipts::launchItems()
{
    DiscoveryScene scene;
    FakeMac &mac = scene.mac();
    const AppInfo app = scene.addApp(u"/Applications/Writer.app"_s, u"com.acme.writer"_s);
    scene.addApp(u"/Applications/Other.app"_s, u"org.other.app"_s);
    const QString helper = u"/Library/PrivilegedHelperTools/org.toolkit.helperd"_s;
    mac.addFile(helper, 300);
    mac.addPlist(u"~/Library/LaunchAgents/com.acme.writer.agent.plist"_s, job({}, {}));
    mac.addTextFile(u"~/Library/LaunchAgents/com.acme.writer.broken.plist"_s, "not a plist");
    // No Label, outside the namespace: found by its program inside the bundle.
    mac.addPlist(u"/Library/LaunchDaemons/org.toolkit.daemon.plist"_s,
                 QVariantMap{{u"ProgramArguments"_s,
                              QVariantList{u"/Applications/Writer.app/Contents/MacOS/Writer"_s}}},
                 FakeMac::PlistFormat::binary);
    mac.addPlist(
        u"/Library/LaunchDaemons/org.toolkit.helperd.plist"_s,
        QVariantMap{{u"Program"_s, helper},
                    {u"AssociatedBundleIdentifiers"_s, QVariantList{u"com.acme.writer"_s}}});
    // Matches by label but starts another installed app: left alone.
    mac.addPlist(
        u"/Library/LaunchAgents/com.acme.writer.other.plist"_s,
        job(u"com.acme.writer.other"_s, u"/Applications/Other.app/Contents/MacOS/agent"_s));
    // The app it would start is gone: kept.
    mac.addPlist(u"/Library/LaunchAgents/com.acme.writer.gone.plist"_s,
                 job({}, u"/Applications/Gone.app/Contents/MacOS/agent"_s));
    mac.addPlist(u"/Library/LaunchAgents/org.unrelated.plist"_s,
                 job(u"org.unrelated"_s, u"/usr/bin/true"_s));

    const QList<FileItem> items = discover(app);
    QCOMPARE(scene.macPaths(items).mid(1),
             (QStringList{u"~/Library/LaunchAgents/com.acme.writer.agent.plist"_s,
                          u"~/Library/LaunchAgents/com.acme.writer.broken.plist"_s,
                          u"/Library/LaunchAgents/com.acme.writer.gone.plist"_s,
                          u"/Library/LaunchDaemons/org.toolkit.daemon.plist"_s,
                          u"/Library/LaunchDaemons/org.toolkit.helperd.plist"_s, helper}));
    QCOMPARE(items.at(4).category, FileCategory::launchDaemons);
    QCOMPARE(items.last().category, FileCategory::helperTools);
    QCOMPARE(items.last().size, 300);
}

void tst_DiscoveryLaunchdAndReceipts::helperToolFoundTwiceAppearsOnce()
{
    DiscoveryScene scene;
    const AppInfo app = scene.addApp(u"/Applications/Writer.app"_s, u"com.acme.writer"_s);
    scene.addApp(u"/Applications/Acme Sheets.app"_s, u"com.acme.sheets"_s);
    const QString helper = u"/Library/PrivilegedHelperTools/com.acme.helper"_s;
    scene.mac().addFile(helper, 1);
    scene.mac().addPlist(u"/Library/LaunchDaemons/com.acme.writer.helper.plist"_s,
                         QVariantMap{{u"Program"_s, helper}});
    const QList<FileItem> items = discover(app);
    QCOMPARE(scene.macPaths(items).count(helper), 1);
    // The search location found it first, on vendor evidence: its verdict stays.
    const FileItem *found = scene.find(items, helper);
    QVERIFY(!found->isSelected);
    QCOMPARE(found->note, std::optional<QString>(u"Shared with Acme Sheets, left unselected"_s));
}

void tst_DiscoveryLaunchdAndReceipts::receipts()
{
    DiscoveryScene scene;
    const AppInfo app = scene.addApp(u"/Applications/Writer.app"_s, u"com.acme.writer"_s);
    FakeMacTools::addPackage(scene.mac(), {u"com.acme.writer.pkg"_s, {}, true, 5000});
    FakeMacTools::addPackage(scene.mac(), {u"com.acme.writer.extras"_s, {}, false, 0});
    FakeMacTools::addPackage(scene.mac(), {u"com.apple.pkg.com.acme.writer"_s, {}, true, 1});
    scene.mac().addFile(u"/private/var/db/receipts/com.acme.writer pkg.plist"_s, 10);
    const QString folder = scene.mac().path(u"/private/var/db/receipts/"_s);
    const QList<FileItem> items = discover(app);
    QCOMPARE(scene.macPaths(items).mid(1),
             (QStringList{u"/private/var/db/receipts/com.acme.writer.extras.plist"_s,
                          u"/private/var/db/receipts/com.acme.writer.pkg.plist"_s}));
    QCOMPARE(items.at(1).packageID, std::optional<QString>(u"com.acme.writer.extras"_s));
    QCOMPARE(items.at(1).size, QFileInfo(folder + u"com.acme.writer.extras.plist"_s).size());
    QCOMPARE(items.at(2).packageID, std::optional<QString>(u"com.acme.writer.pkg"_s));
    QCOMPARE(items.at(2).size, QFileInfo(folder + u"com.acme.writer.pkg.plist"_s).size() + 5000);
    QCOMPARE(items.at(2).category, FileCategory::receipts);
}

void tst_DiscoveryLaunchdAndReceipts::packagesFromThePackageTool()
{
    DiscoveryScene scene;
    const AppInfo app = scene.addApp(u"/Applications/Writer.app"_s, u"com.acme.writer"_s);
    // A package whose identifier names nothing of the app: only pkgutil ties it to the bundle.
    FakeMacTools::addPackage(scene.mac(), {u"net.installer.wr"_s, {u"/Applications/Writer.app"_s}});
    FakeMacTools::addPackage(scene.mac(),
                             {u"net.installer.other"_s, {u"/Applications/Other.app"_s}});
    scene.mac().addFile(u"~/Library/Caches/net.installer.wr/x"_s, 1);
    // Found only through the metadata index: outside the Applications folders.
    scene.addApp(u"/opt/Tools/Writer Pro.app"_s, u"com.acme.writer.pro"_s);
    scene.mac().addFile(u"~/Library/Caches/com.acme.writer.pro/x"_s, 1);

    const QList<FileItem> items = discover(app);
    QCOMPARE(scene.macPaths(items).mid(1),
             (QStringList{u"~/Library/Caches/net.installer.wr"_s,
                          u"/private/var/db/receipts/net.installer.wr.plist"_s}));
    const QList<QStringList> calls = scene.mac().calls();
    QVERIFY(calls.contains(
        QStringList{u"/usr/sbin/pkgutil"_s, u"--file-info"_s, u"/Applications/Writer.app"_s}));
    QVERIFY(calls.contains(QStringList{
        u"/usr/bin/mdfind"_s,
        u"kMDItemContentType == 'com.apple.application-bundle' && kMDItemCFBundleIdentifier == 'com.acme.*'c"_s}));
    QVERIFY(calls.contains(QStringList{
        u"/usr/bin/mdfind"_s,
        u"kMDItemContentType == 'com.apple.application-bundle' && kMDItemCFBundleIdentifier == 'com.acme.writer*'c"_s}));
    QCOMPARE(calls.size(), 3);
}

void tst_DiscoveryLaunchdAndReceipts::missingToolsContributeNothing()
{
    DiscoveryScene scene;
    const AppInfo app = scene.addApp(u"/Applications/Writer.app"_s, u"com.acme.writer"_s);
    QVERIFY(QFile::remove(scene.mac().path(u"/usr/sbin/pkgutil"_s)));
    QVERIFY(QFile::remove(scene.mac().path(u"/usr/bin/mdfind"_s)));
    scene.mac().addFile(u"~/Library/Caches/com.acme.writer/x"_s, 1);
    QCOMPARE(scene.macPaths(discover(app)).mid(1),
             QStringList{u"~/Library/Caches/com.acme.writer"_s});
}

QTEST_GUILESS_MAIN(tst_DiscoveryLaunchdAndReceipts)
#include "tst_DiscoveryLaunchdAndReceipts.moc"
