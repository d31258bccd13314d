// SPDX-License-Identifier: MIT
#include "Platform/SystemLayout.h"
#include "Services/FileDiscoveryService.h"
#include "support/DiscoveryScene.h"
#include "support/FakeMacTools.h"

#include <QFile>
#include <QTest>
#include <QtConcurrent>

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

class tst_FileDiscoveryService : public QObject
{
    Q_OBJECT

private slots:
    void bundleFirstThenLocationsInOrder();
    void systemAppBundleIsProtected();
    void vendorFolder_data();
    void vendorFolder();
    void vendorNamedFolderNeedsFourLetters();
    void sharedAppGroupIsLeftUnselected();
    void electronNamespaceTakesNoVendorFiles();
    void crashReports();
    void launchItems();
    void helperToolFoundTwiceAppearsOnce();
    void receipts();
    void homeFolder_data();
    void homeFolder();
    void packagesFromThePackageTool();
    void missingToolsContributeNothing();
    void parallelDiscoveriesAgree();
    void fullDiskAccessProbe();
};

void tst_FileDiscoveryService::bundleFirstThenLocationsInOrder()
{
    DiscoveryScene scene;
    FakeMac &mac = scene.mac();
    const AppInfo writer = scene.addApp(u"/Applications/Writer.app"_s, u"com.acme.Writer"_s);
    mac.setDarwinUserDirectories(u"/private/var/folders/xy/C"_s, u"/private/var/folders/xy/T"_s);
    mac.addFile(u"/private/var/folders/xy/T/com.acme.writer/tmp1"_s, 10);
    mac.addFile(u"/Library/Caches/com.acme.writer.data"_s, 5);
    mac.addFile(u"~/Library/Saved Application State/com.acme.writer.savedState/w"_s, 7);
    mac.addFile(u"~/Library/Preferences/com.acme.writer.plist"_s, 3);
    mac.addFile(u"~/Library/Preferences/ByHost/com.acme.writer.0A1B.plist"_s, 3);
    mac.addFile(u"~/Library/Application Support/Writer/db"_s, 100);
    mac.addFile(u"~/Library/Containers/com.acme.writer/Data/x"_s, 1);
    mac.addFile(u"~/Library/Preferences/com.other.app.plist"_s, 3);

    const QList<FileItem> items = discover(writer);
    QCOMPARE(scene.macPaths(items),
             (QStringList{u"/Applications/Writer.app"_s, u"~/Library/Application Support/Writer"_s,
                          u"~/Library/Containers/com.acme.writer"_s,
                          u"~/Library/Preferences/com.acme.writer.plist"_s,
                          u"~/Library/Preferences/ByHost/com.acme.writer.0A1B.plist"_s,
                          u"~/Library/Saved Application State/com.acme.writer.savedState"_s,
                          u"/Library/Caches/com.acme.writer.data"_s,
                          u"/private/var/folders/xy/T/com.acme.writer"_s}));
    const QList<FileCategory> categories{
        FileCategory::application, FileCategory::applicationSupport, FileCategory::containers,
        FileCategory::preferences, FileCategory::preferences,        FileCategory::savedState,
        FileCategory::caches,      FileCategory::temporary};
    for (qsizetype i = 0; i < items.size(); ++i) {
        QCOMPARE(items.at(i).category, categories.at(i));
        QVERIFY(items.at(i).isSelected);
        QCOMPARE(items.at(i).confidence, 1.0);
        QVERIFY(!items.at(i).isProtected);
        QVERIFY(!items.at(i).packageID);
    }
    QCOMPARE(items.at(1).size, 100);
}

void tst_FileDiscoveryService::systemAppBundleIsProtected()
{
    DiscoveryScene scene;
    AppInfo chess = scene.addApp(u"/System/Applications/Chess.app"_s, u"com.apple.Chess"_s);
    chess.isSystemProtected = true;
    scene.mac().addFile(u"~/Library/Containers/com.apple.chess/x"_s, 1);
    const QList<FileItem> items = discover(chess);
    QCOMPARE(items.size(), 2);
    QVERIFY(!items.at(0).isSelected);
    QVERIFY(items.at(0).isProtected);
    QCOMPARE(items.at(0).note, std::optional<QString>(u"Part of macOS"_s));
    QVERIFY(items.at(1).isSelected);
    QVERIFY(!items.at(1).isProtected);
}

void tst_FileDiscoveryService::vendorFolder_data()
{
    QTest::addColumn<bool>("sheetsInstalled");
    QTest::addColumn<QString>("appPath");
    QTest::addColumn<QStringList>("found");
    QTest::addColumn<QString>("note");
    const QString acme = u"~/Library/Application Support/Acme"_s;
    QTest::newRow("no other Acme app: whole")
        << false << u"/Applications/Writer.app"_s << QStringList{acme}
        << u"Shared Acme files, no other Acme apps installed"_s;
    QTest::newRow("Acme Sheets installed: searched inside")
        << true << u"/Applications/Writer.app"_s
        << QStringList{acme + u"/Writer"_s, acme + u"/com.acme.writer.db"_s,
                       acme + u"/writer.savedState"_s}
        << QString();
    QTest::newRow("app called like its vendor")
        << true << u"/Applications/Acme.app"_s << QStringList{acme} << QString();
}

void tst_FileDiscoveryService::vendorFolder()
{
    QFETCH(bool, sheetsInstalled);
    QFETCH(QString, appPath);
    QFETCH(QStringList, found);
    QFETCH(QString, note);
    DiscoveryScene scene;
    const AppInfo app = scene.addApp(appPath, u"com.acme.writer"_s);
    if (sheetsInstalled)
        scene.addApp(u"/Applications/Acme Sheets.app"_s, u"com.acme.sheets"_s);
    for (const char16_t *name : {u"Writer", u"com.acme.writer.db", u"writer.savedState", u"Sheets",
                                 u"Common", u"com.acme.shared"})
        scene.mac().addFile(
            u"~/Library/Application Support/Acme/"_s + QString::fromUtf16(name) + u"/f"_s, 1);
    const QList<FileItem> items = discover(app);
    QCOMPARE(scene.macPaths(items).mid(1), found);
    QCOMPARE(items.at(1).note.value_or(QString()), note);
    QCOMPARE(items.at(1).isSelected, true);
    QCOMPARE(items.at(1).confidence, note.isEmpty() ? 1.0 : 0.7);
}

void tst_FileDiscoveryService::vendorNamedFolderNeedsFourLetters()
{
    DiscoveryScene scene;
    const AppInfo acme = scene.addApp(u"/Applications/Writer.app"_s, u"com.acme.writer"_s);
    const AppInfo abc = scene.addApp(u"/Applications/Draw.app"_s, u"com.abc.draw"_s);
    scene.mac().addFile(u"~/Library/Logs/Acme Tools/Writer/log"_s, 1);
    scene.mac().addFile(u"~/Library/Logs/Acme Tools/Other/log"_s, 1);
    scene.mac().addFile(u"~/Library/Logs/Abc Tools/Draw/log"_s, 1);
    QCOMPARE(scene.macPaths(discover(acme)).mid(1),
             QStringList{u"~/Library/Logs/Acme Tools/Writer"_s});
    QCOMPARE(scene.macPaths(discover(abc)).mid(1), QStringList());
}

void tst_FileDiscoveryService::sharedAppGroupIsLeftUnselected()
{
    DiscoveryScene scene;
    const QString group = u"ABCDE12345.com.acme.suite"_s;
    const AppInfo writer = scene.addApp(u"/Applications/Acme/Writer.app"_s, u"com.acme.writer"_s,
                                        {group, u"group.com.acme.writer"_s});
    scene.addApp(u"/Applications/Acme/Acme Sheets.app"_s, u"com.acme.sheets"_s, {group});
    scene.addApp(u"/Applications/Acme Slides.app"_s, u"com.acme.slides"_s, {group});
    scene.mac().addFile(u"~/Library/Group Containers/"_s + group + u"/x"_s, 1);
    scene.mac().addFile(u"~/Library/Group Containers/group.com.acme.writer/x"_s, 1);
    const QList<FileItem> items = discover(writer);
    const FileItem *shared = scene.find(items, u"~/Library/Group Containers/"_s + group);
    QVERIFY(shared);
    QVERIFY(!shared->isSelected);
    QCOMPARE(shared->confidence, 0.7);
    QCOMPARE(shared->note,
             std::optional<QString>(u"Shared with Acme Sheets and Acme Slides, left unselected"_s));
    const FileItem *own = scene.find(items, u"~/Library/Group Containers/group.com.acme.writer"_s);
    QVERIFY(own);
    QVERIFY(own->isSelected);
    QVERIFY(!own->note);
}

void tst_FileDiscoveryService::electronNamespaceTakesNoVendorFiles()
{
    DiscoveryScene scene;
    const AppInfo app = scene.addApp(u"/Applications/Notes.app"_s, u"com.electron.notes"_s);
    scene.addApp(u"/Applications/Chat.app"_s, u"com.electron.chat"_s);
    scene.mac().addFile(u"~/Library/Application Support/com.electron.chat/x"_s, 1);
    scene.mac().addFile(u"~/Library/Application Support/com.electron.shared/x"_s, 1);
    scene.mac().addFile(u"~/Library/Preferences/com.electron.notes.plist"_s, 1);
    QCOMPARE(scene.macPaths(discover(app)).mid(1),
             QStringList{u"~/Library/Preferences/com.electron.notes.plist"_s});
}

void tst_FileDiscoveryService::crashReports()
{
    DiscoveryScene scene;
    const AppInfo app = scene.addApp(u"/Applications/Writer.app"_s, u"com.acme.writer"_s);
    for (const char16_t *name : {u"Writer-2024-05-01-101010.ips", u"Writer_2024-05-01_host.crash",
                                 u"WriterHelper.ips", u"Writer", u"Other-2024.ips"})
        scene.mac().addFile(u"~/Library/Logs/DiagnosticReports/"_s + QString::fromUtf16(name), 1);
    scene.mac().addFile(u"/Library/Logs/DiagnosticReports/Retired/Writer-1.ips"_s, 1);
    scene.mac().addFile(u"/Library/Logs/DiagnosticReports/Writer-2.ips"_s, 1);
    QCOMPARE(scene.macPaths(discover(app)).mid(1),
             (QStringList{u"~/Library/Logs/DiagnosticReports/Writer-2024-05-01-101010.ips"_s,
                          u"~/Library/Logs/DiagnosticReports/Writer_2024-05-01_host.crash"_s,
                          u"/Library/Logs/DiagnosticReports/Writer-2.ips"_s}));
}

void tst_FileDiscoveryService::launchItems()
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

void tst_FileDiscoveryService::helperToolFoundTwiceAppearsOnce()
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

void tst_FileDiscoveryService::receipts()
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

void tst_FileDiscoveryService::homeFolder_data()
{
    QTest::addColumn<QString>("appPath");
    QTest::addColumn<QString>("identifier");
    QTest::addColumn<QStringList>("entries");
    QTest::addColumn<QStringList>("found");
    QTest::newRow("dot-folders and .config")
        << u"/Applications/Writer.app"_s << u"com.acme.writer"_s
        << QStringList{u".writer"_s, u".writer-cli"_s,    u".writerpro"_s,
                       u"writer"_s,  u".config/writer"_s, u".config/other"_s}
        << QStringList{u"~/.writer"_s, u"~/.writer-cli"_s, u"~/.config/writer"_s};
    QTest::newRow("short name of four letters and more")
        << u"/Applications/Quill Editor.app"_s << u"com.acme.quill"_s << QStringList{u".quill"_s}
        << QStringList{u"~/.quill"_s};
    QTest::newRow("short name of three letters")
        << u"/Applications/Ink Editor.app"_s << u"com.acme.ink"_s << QStringList{u".ink"_s}
        << QStringList();
    QTest::newRow("shared dot-folders, whatever the app's name")
        << u"/Applications/Local.app"_s << u"com.acme.local"_s
        << QStringList{u".local"_s, u".Local"_s, u".config/local"_s, u".cache"_s, u".ssh"_s}
        << QStringList{u"~/.config/local"_s};
    QTest::newRow("npm is shared") << u"/Applications/npm.app"_s << u"com.acme.npm"_s
                                   << QStringList{u".npm"_s} << QStringList();
}

void tst_FileDiscoveryService::homeFolder()
{
    QFETCH(QString, appPath);
    QFETCH(QString, identifier);
    QFETCH(QStringList, entries);
    QFETCH(QStringList, found);
    DiscoveryScene scene;
    const AppInfo app = scene.addApp(appPath, identifier);
    for (const QString &entry : entries)
        scene.mac().addFile(u"~/"_s + entry + u"/f"_s, 1);
    QCOMPARE(scene.macPaths(discover(app)).mid(1), found);
}

void tst_FileDiscoveryService::packagesFromThePackageTool()
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

void tst_FileDiscoveryService::missingToolsContributeNothing()
{
    DiscoveryScene scene;
    const AppInfo app = scene.addApp(u"/Applications/Writer.app"_s, u"com.acme.writer"_s);
    QVERIFY(QFile::remove(scene.mac().path(u"/usr/sbin/pkgutil"_s)));
    QVERIFY(QFile::remove(scene.mac().path(u"/usr/bin/mdfind"_s)));
    scene.mac().addFile(u"~/Library/Caches/com.acme.writer/x"_s, 1);
    QCOMPARE(scene.macPaths(discover(app)).mid(1),
             QStringList{u"~/Library/Caches/com.acme.writer"_s});
}

void tst_FileDiscoveryService::parallelDiscoveriesAgree()
{
    DiscoveryScene scene;
    QList<AppInfo> apps;
    for (int i = 0; i < 6; ++i) {
        const QString name = u"App%1"_s.arg(i);
        apps.append(
            scene.addApp(u"/Applications/"_s + name + u".app"_s, u"com.vendor%1.app%1"_s.arg(i)));
        scene.mac().addFile(u"~/Library/Caches/com.vendor%1.app%1/x"_s.arg(i), 10 * i);
        scene.mac().addFile(u"~/Library/Application Support/"_s + name + u"/y"_s, i);
    }
    const FileDiscoveryService service;
    QList<QStringList> sequential;
    for (const AppInfo &app : apps)
        sequential.append(scene.macPaths(service.discoverFiles(app)));
    const QList<QList<FileItem>> parallel = QtConcurrent::blockingMapped(
        apps, [&service](const AppInfo &app) { return service.discoverFiles(app); });
    for (qsizetype i = 0; i < apps.size(); ++i) {
        QCOMPARE(scene.macPaths(parallel.at(i)), sequential.at(i));
        QCOMPARE(sequential.at(i).size(), 3);
    }
}

void tst_FileDiscoveryService::fullDiskAccessProbe()
{
    DiscoveryScene scene;
    QVERIFY(!FileDiscoveryService::hasFullDiskAccess());
    scene.mac().addFile(u"/Library/Application Support/com.apple.TCC/TCC.db"_s, 10);
    QVERIFY(FileDiscoveryService::hasFullDiskAccess());
}

QTEST_GUILESS_MAIN(tst_FileDiscoveryService)
#include "tst_FileDiscoveryService.moc"
