// SPDX-License-Identifier: MIT
#include "Discovery/FingerprintBuilder.h"
#include "Platform/ToolRunner.h"
#include "support/DiscoveryScene.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_FingerprintBuilder : public QObject
{
    Q_OBJECT

private slots:
    void vendorAndShortName_data();
    void vendorAndShortName();
    void names_data();
    void names();
    void embeddedBundlesOfTheSameVendorOnly();
    void siblingsAndGroupSharers();
};

void tst_FingerprintBuilder::vendorAndShortName_data()
{
    QTest::addColumn<QString>("identifier");
    QTest::addColumn<QString>("vendor");
    QTest::addColumn<QString>("vendorPrefix");
    QTest::addColumn<QString>("shortName");
    const auto row = [](const char *name, const char *identifier, const char *vendor,
                        const char *prefix, const char *shortName) {
        QTest::newRow(name) << QString::fromLatin1(identifier) << QString::fromLatin1(vendor)
                            << QString::fromLatin1(prefix) << QString::fromLatin1(shortName);
    };
    row("plain", "com.acme.Writer", "acme", "com.acme.", "writer");
    row("shared namespace", "com.electron.myapp", "", "", "myapp");
    row("two-letter vendor", "com.ab.tool", "", "", "tool");
    row("generic short name", "net.acme.helper", "acme", "net.acme.", "");
    row("two components", "acme.writer", "", "", "");
    row("empty pieces dropped", "com..acme.writer", "acme", "com.acme.", "writer");
}

void tst_FingerprintBuilder::vendorAndShortName()
{
    QFETCH(QString, identifier);
    QFETCH(QString, vendor);
    QFETCH(QString, vendorPrefix);
    QFETCH(QString, shortName);
    DiscoveryScene scene;
    const AppInfo app = scene.addApp(u"/Applications/Some.app"_s, identifier);
    const Fingerprint fp = FingerprintBuilder(scene.layout(), ToolRunner()).build(app);
    QCOMPARE(fp.mainBundleID, identifier.toLower());
    QCOMPARE(fp.vendor, vendor);
    QCOMPARE(fp.vendorPrefix, vendorPrefix);
    QCOMPARE(fp.shortName, shortName);
}

void tst_FingerprintBuilder::names_data()
{
    QTest::addColumn<QString>("bundle");
    QTest::addColumn<QVariantMap>("info");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QStringList>("crashReportNames");
    QTest::newRow("one name everywhere") << "Foo.app" << QVariantMap{{u"CFBundleName"_s, u"Foo"_s}}
                                         << QStringList{u"foo"_s} << QStringList{u"foo"_s};
    QTest::newRow("display name normalised")
        << "My App.app" << QVariantMap{{u"CFBundleDisplayName"_s, u"\tMy-App "_s}}
        << QStringList{u"myapp"_s} << QStringList{u"\tmy-app "_s, u"my app"_s};
    QTest::newRow("generic and short names dropped")
        << "Go.app" << QVariantMap{{u"CFBundleName"_s, u"App"_s}} << QStringList() << QStringList();
}

void tst_FingerprintBuilder::names()
{
    QFETCH(QString, bundle);
    QFETCH(QVariantMap, info);
    QFETCH(QStringList, names);
    QFETCH(QStringList, crashReportNames);
    DiscoveryScene scene;
    const Fingerprint fp =
        FingerprintBuilder(scene.layout(), ToolRunner())
            .build(scene.addApp(u"/Applications/"_s + bundle, u"com.acme.thing"_s, {}, info));
    const auto sorted = [](const QSet<QString> &set) {
        QStringList list(set.cbegin(), set.cend());
        list.sort();
        return list;
    };
    QCOMPARE(sorted(fp.names), names);
    QCOMPARE(sorted(fp.crashReportNames), crashReportNames);
}

void tst_FingerprintBuilder::embeddedBundlesOfTheSameVendorOnly()
{
    DiscoveryScene scene;
    const AppInfo writer = scene.addApp(u"/Applications/Writer.app"_s, u"com.acme.writer"_s);
    const QString contents = u"/Applications/Writer.app/Contents/"_s;
    scene.addApp(contents + u"Library/LoginItems/Writer Launcher.app"_s,
                 u"com.acme.writer.launcher"_s, {u"group.com.acme.launcher"_s});
    scene.addApp(contents + u"PlugIns/Share.appex"_s, u"com.acme.share"_s);
    scene.addApp(contents + u"Frameworks/Updater.app"_s, u"org.otherparty.Updater"_s,
                 {u"group.org.otherparty"_s});
    scene.addApp(contents + u"Frameworks/Kit.framework"_s, u"com.acme.kit"_s);
    scene.mac().addFile(contents + u"Library/LaunchServices/com.acme.writer.helperd"_s, 1);
    scene.mac().addFile(contents + u"Library/LaunchServices/org.other.helperd"_s, 1);
    const Fingerprint fp = FingerprintBuilder(scene.layout(), ToolRunner()).build(writer);
    QCOMPARE(fp.bundleIDs, (QSet<QString>{u"com.acme.writer"_s, u"com.acme.writer.launcher"_s,
                                          u"com.acme.share"_s, u"com.acme.writer.helperd"_s}));
    QCOMPARE(fp.groupIDs, QSet<QString>{u"group.com.acme.launcher"_s});
    QCOMPARE(fp.executableNames, (QSet<QString>{u"writer"_s, u"writer launcher"_s, u"share"_s}));
    // Apps inside the app are not other installed apps.
    QVERIFY(fp.otherAppIDs.isEmpty());

    // A two-letter vendor gives no prefix: only identifiers that continue the app's own count.
    const AppInfo tool = scene.addApp(u"/Applications/Tool.app"_s, u"com.ab.tool"_s);
    for (const QString &id : {u"com.ab.tool.helper"_s, u"com.ab.toolkit"_s})
        scene.addApp(u"/Applications/Tool.app/Contents/PlugIns/%1.appex"_s.arg(id), id);
    QCOMPARE(FingerprintBuilder(scene.layout(), ToolRunner()).build(tool).bundleIDs,
             (QSet<QString>{u"com.ab.tool"_s, u"com.ab.tool.helper"_s}));
}

void tst_FingerprintBuilder::siblingsAndGroupSharers()
{
    DiscoveryScene scene;
    const QString group = u"ABCDE12345.com.acme.suite"_s;
    const AppInfo writer =
        scene.addApp(u"/Applications/Writer.app"_s, u"com.acme.writer"_s, {group});
    scene.addApp(u"/Applications/A/B/C/Acme Sheets.app"_s, u"com.acme.sheets"_s, {group});
    scene.addApp(u"/Applications/A/B/C/D/Too Deep.app"_s, u"com.acme.deep"_s, {}, {});
    scene.addApp(u"~/Applications/Acme Notes.app"_s, u"com.acme.notes"_s, {group});
    scene.addApp(u"~/.Trash/Acme Old.app"_s, u"com.acme.old"_s);
    scene.addApp(u"/Applications/Copy of Writer.app"_s, u"com.acme.WRITER"_s);
    scene.addApp(u"/Applications/Firefox.app"_s, u"org.mozilla.firefox"_s);
    const Fingerprint fp = FingerprintBuilder(scene.layout(), ToolRunner()).build(writer);
    // "Too Deep" is five levels down, yet the metadata index knows it.
    QCOMPARE(fp.otherVendorAppNames,
             (QStringList{u"Acme Notes"_s, u"Acme Sheets"_s, u"Too Deep"_s}));
    QCOMPARE(fp.groupSharers.value(group.toLower()),
             (QStringList{u"Acme Notes"_s, u"Acme Sheets"_s}));
    QCOMPARE(fp.otherAppIDs, (QSet<QString>{u"com.acme.sheets"_s, u"com.acme.deep"_s,
                                            u"com.acme.notes"_s, u"org.mozilla.firefox"_s}));
    QCOMPARE(fp.groupIDs, QSet<QString>{group.toLower()});
}

QTEST_GUILESS_MAIN(tst_FingerprintBuilder)
#include "tst_FingerprintBuilder.moc"
