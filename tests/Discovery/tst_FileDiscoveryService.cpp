// SPDX-License-Identifier: MIT
#include "Discovery/FileDiscoveryService.h"
#include "Platform/SystemLayout.h"
#include "support/DiscoveryScene.h"

#include <QTest>
#include <QtConcurrent>

using namespace Qt::StringLiterals;

namespace {
QList<FileItem> discover(const AppInfo &app)
{
    return FileDiscoveryService().discoverFiles(app);
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
    void finds_data();
    void finds();
    void sharedAppGroupIsLeftUnselected();
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

// Which of the files below the app's own bundle discovery takes, other apps installed beside it.
void tst_FileDiscoveryService::finds_data()
{
    QTest::addColumn<QString>("appPath");
    QTest::addColumn<QString>("identifier");
    QTest::addColumn<QStringList>("otherApps"); // "path identifier"
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QStringList>("found");
    const QString writer = u"/Applications/Writer.app"_s;
    const QString reports = u"~/Library/Logs/DiagnosticReports/"_s;
    QTest::newRow("vendor-named folder, four letters")
        << writer << u"com.acme.writer"_s << QStringList{u"/Applications/Draw.app com.abc.draw"_s}
        << QStringList{u"~/Library/Logs/Acme Tools/Writer/log"_s,
                       u"~/Library/Logs/Acme Tools/Other/log"_s}
        << QStringList{u"~/Library/Logs/Acme Tools/Writer"_s};
    QTest::newRow("vendor-named folder, three letters")
        << u"/Applications/Draw.app"_s << u"com.abc.draw"_s << QStringList{}
        << QStringList{u"~/Library/Logs/Abc Tools/Draw/log"_s} << QStringList{};
    QTest::newRow("electron namespace takes no vendor files")
        << u"/Applications/Notes.app"_s << u"com.electron.notes"_s
        << QStringList{u"/Applications/Chat.app com.electron.chat"_s}
        << QStringList{u"~/Library/Application Support/com.electron.chat/x"_s,
                       u"~/Library/Application Support/com.electron.shared/x"_s,
                       u"~/Library/Preferences/com.electron.notes.plist"_s}
        << QStringList{u"~/Library/Preferences/com.electron.notes.plist"_s};
    // Which names count is the match rules' concern; here, where reports are looked for.
    QTest::newRow("crash reports")
        << writer << u"com.acme.writer"_s << QStringList{}
        << QStringList{reports + u"Writer-2024-05-01-101010.ips"_s, reports + u"Other-2024.ips"_s,
                       u"/Library/Logs/DiagnosticReports/Retired/Writer-1.ips"_s,
                       u"/Library/Logs/DiagnosticReports/Writer-2.ips"_s}
        << QStringList{reports + u"Writer-2024-05-01-101010.ips"_s,
                       u"/Library/Logs/DiagnosticReports/Writer-2.ips"_s};
    QTest::newRow("home short name of four letters")
        << u"/Applications/Quill Editor.app"_s << u"com.acme.quill"_s << QStringList{}
        << QStringList{u"~/.quill/f"_s} << QStringList{u"~/.quill"_s};
    QTest::newRow("home short name of three letters")
        << u"/Applications/Ink Editor.app"_s << u"com.acme.ink"_s << QStringList{}
        << QStringList{u"~/.ink/f"_s} << QStringList{};
}

void tst_FileDiscoveryService::finds()
{
    QFETCH(QString, appPath);
    QFETCH(QString, identifier);
    QFETCH(QStringList, otherApps);
    QFETCH(QStringList, files);
    QFETCH(QStringList, found);
    DiscoveryScene scene;
    const AppInfo app = scene.addApp(appPath, identifier);
    for (const QString &other : otherApps)
        scene.addApp(other.section(u' ', 0, -2), other.section(u' ', -1));
    for (const QString &file : files)
        scene.mac().addFile(file, 1);
    QCOMPARE(scene.macPaths(discover(app)).mid(1), found);
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
