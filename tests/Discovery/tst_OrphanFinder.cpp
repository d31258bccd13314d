// SPDX-License-Identifier: MIT
// Leftovers of a deleted app on a fake Mac where other apps are still installed.
#include "Discovery/OrphanFinder.h"
#include "fakemac/FakeMacTools.h"
#include "support/DiscoveryScene.h"

#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

class TestOrphanFinder : public QObject
{
    Q_OBJECT

    DiscoveryScene m_scene;
    // Each item found, by Mac path, with the name of its group.
    QHash<QString, std::pair<QString, FileItem>> m_found;

private slots:
    void initTestCase()
    {
        FakeMac &mac = m_scene.mac();
        m_scene.addApp(u"/Applications/Writer.app"_s, u"com.acme.writer"_s);
        FakeMacTools::addPackage(mac, {u"com.acme.writer.pkg"_s, {u"/Applications/Writer.app"_s}});
        // Installed outside the Applications folders: only the metadata index knows it.
        m_scene.addApp(u"/opt/Sketchbook.app"_s, u"org.inkwell.sketchbook"_s);
        const QStringList files{
            u"~/Library/Preferences/com.brushco.painter.plist"_s,
            u"~/Library/Application Support/Painter/data"_s,
            u"~/Library/Caches/BrushCo/cache"_s,
            u"~/.painter-cli"_s,
            u"~/Library/Caches/com.solo.tool/c"_s,
            u"~/Library/Preferences/com.acme.writer.plist"_s,
            u"~/Library/Preferences/com.acme.writer.helper.plist"_s,
            u"~/Library/Application Support/Writer Pro/data"_s,
            u"~/Library/Caches/org.inkwell.sketchbook/c"_s,
            u"~/Library/Preferences/com.apple.dock.plist"_s,
            u"~/Library/Application Support/AddressBook/db"_s,
            u"~/Library/Preferences/ByHost/com.brushco.painter.ABC.plist"_s,
        };
        for (const QString &file : files)
            mac.addTextFile(file, "x");
        mac.addFolder(u"~/Library/Group Containers/ABCDE12345.com.brushco.painter"_s);
        FakeMacTools::addPackage(mac, {u"com.brushco.painter.pkg"_s, {}});
        mac.addPlist(u"~/Library/LaunchAgents/com.brushco.painter.agent.plist"_s,
                     QVariantMap{{u"Label"_s, u"com.brushco.painter.agent"_s},
                                 {u"Program"_s, u"/Applications/Painter.app/Contents/MacOS/P"_s}});
        mac.addPlist(u"~/Library/LaunchAgents/org.other.sync.plist"_s,
                     QVariantMap{{u"Label"_s, u"org.other.sync"_s},
                                 {u"Program"_s, u"/Applications/Writer.app/Contents/MacOS/W"_s}});
        // A FIFO where a job is expected must not hang the search.
        QCOMPARE(::mkfifo(QFile::encodeName(mac.path(u"~/Library/LaunchAgents/com.fifo.x.plist"_s))
                              .constData(),
                          0600),
                 0);
        for (const OrphanGroup &group : OrphanFinder(m_scene.layout()).find()) {
            for (const FileItem &item : group.items)
                m_found.insert(m_scene.macPathOf(item.path), {group.name, item});
        }
    }

    // Expected: "[x] group" selected, "[ ] group" listed unselected, "" not listed at all.
    void itemsAndSelection_data()
    {
        QTest::addColumn<QString>("macPath");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, const char *path, const char *expected = "") {
            QTest::newRow(name) << QString::fromUtf8(path) << QString::fromUtf8(expected);
        };
        row("identifier, receipt and container", "~/Library/Preferences/com.brushco.painter.plist",
            "[x] Painter");
        row("team-prefixed container", "~/Library/Group Containers/ABCDE12345.com.brushco.painter",
            "[x] Painter");
        row("receipt", "/private/var/db/receipts/com.brushco.painter.pkg.plist", "[x] Painter");
        row("job of a missing app", "~/Library/LaunchAgents/com.brushco.painter.agent.plist",
            "[x] Painter");
        row("in a scanned subfolder", "~/Library/Preferences/ByHost/com.brushco.painter.ABC.plist",
            "[x] Painter");
        row("plain name of the app", "~/Library/Application Support/Painter", "[ ] Painter");
        row("vendor folder", "~/Library/Caches/BrushCo", "[ ] Painter");
        row("dot-entry continuing the name", "~/.painter-cli", "[ ] Painter");
        row("identifier without strong evidence", "~/Library/Caches/com.solo.tool", "[ ] Tool");
        row("installed app", "~/Library/Preferences/com.acme.writer.plist");
        row("installed app's helper", "~/Library/Preferences/com.acme.writer.helper.plist");
        row("name continuing an installed app's", "~/Library/Application Support/Writer Pro");
        row("app only the index knows", "~/Library/Caches/org.inkwell.sketchbook");
        row("job starting an installed app", "~/Library/LaunchAgents/org.other.sync.plist");
        row("platform's own", "~/Library/Preferences/com.apple.dock.plist");
        row("system folder, no app ties", "~/Library/Application Support/AddressBook");
        row("scanned folder itself", "~/Library/Preferences/ByHost");
        row("receipt of an installed app", "/private/var/db/receipts/com.acme.writer.pkg.plist");
    }
    void itemsAndSelection()
    {
        QFETCH(QString, macPath);
        QFETCH(QString, expected);
        const auto [group, item] = m_found.value(macPath); // no group when not listed
        QCOMPARE(group.isEmpty() ? group : (item.isSelected ? u"[x] "_s : u"[ ] "_s) + group,
                 expected);
        QVERIFY(group.isEmpty() || (item.note && !item.note->isEmpty()));
    }

    void receiptCarriesItsPackageAndBillOfMaterials()
    {
        const FileItem item =
            m_found.value(u"/private/var/db/receipts/com.brushco.painter.pkg.plist"_s).second;
        QCOMPARE(item.packageID, u"com.brushco.painter.pkg"_s);
        QVERIFY(item.size > 2048);
    }
};

QTEST_GUILESS_MAIN(TestOrphanFinder)
#include "tst_OrphanFinder.moc"
