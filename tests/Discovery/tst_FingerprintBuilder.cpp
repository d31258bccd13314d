// SPDX-License-Identifier: MIT
#include "Discovery/FingerprintBuilder.h"
#include "Platform/ToolRunner.h"
#include "support/DiscoveryScene.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {
Fingerprint fingerprintOf(const DiscoveryScene &scene, const AppInfo &app)
{
    return FingerprintBuilder(scene.layout(), ToolRunner()).build(app);
}

QString sorted(const QSet<QString> &set)
{
    QStringList list(set.cbegin(), set.cend());
    list.sort();
    return list.join(u',');
}
} // namespace

class tst_FingerprintBuilder : public QObject
{
    Q_OBJECT

private slots:
    void oneApp_data();
    void oneApp();
    void embeddedBundlesAndOtherApps();
};

// The bundle in /Applications, its identifier and Info.plist; the fields the row names
// ("key=value; ..."), sets sorted and joined by ",".
void tst_FingerprintBuilder::oneApp_data()
{
    QTest::addColumn<QString>("bundle");
    QTest::addColumn<QString>("identifier");
    QTest::addColumn<QVariantMap>("info");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *identifier, const char *expected,
                        const char *bundle = "Some.app", const QVariantMap &info = {}) {
        QTest::newRow(name) << QString::fromUtf8(bundle) << QString::fromUtf8(identifier) << info
                            << QString::fromUtf8(expected);
    };
    row("plain", "com.acme.Writer",
        "id=com.acme.writer; vendor=acme; prefix=com.acme.; short=writer");
    row("shared namespace", "com.electron.myapp", "vendor=; prefix=; short=myapp");
    row("two-letter vendor", "com.ab.tool", "vendor=; prefix=; short=tool");
    row("generic short name", "net.acme.helper", "vendor=acme; prefix=net.acme.; short=");
    row("two components", "acme.writer", "vendor=; prefix=; short=");
    row("empty pieces dropped", "com..acme.writer", "vendor=acme; prefix=com.acme.; short=writer");
    row("one name everywhere", "com.acme.thing", "names=foo; crash=foo", "Foo.app",
        {{u"CFBundleName"_s, u"Foo"_s}});
    row("display name normalised", "com.acme.thing", "names=myapp; crash=\tmy-app ,my app",
        "My App.app", {{u"CFBundleDisplayName"_s, u"\tMy-App "_s}});
    row("generic and short names dropped", "com.acme.thing", "names=; crash=", "Go.app",
        {{u"CFBundleName"_s, u"App"_s}});
}

void tst_FingerprintBuilder::oneApp()
{
    QFETCH(QString, bundle);
    QFETCH(QString, identifier);
    QFETCH(QVariantMap, info);
    QFETCH(QString, expected);
    DiscoveryScene scene;
    const Fingerprint fp =
        fingerprintOf(scene, scene.addApp(u"/Applications/"_s + bundle, identifier, {}, info));
    const QHash<QString, QString> fields{
        {u"id"_s, fp.mainBundleID},     {u"vendor"_s, fp.vendor},
        {u"prefix"_s, fp.vendorPrefix}, {u"short"_s, fp.shortName},
        {u"names"_s, sorted(fp.names)}, {u"crash"_s, sorted(fp.crashReportNames)}};
    QStringList actual;
    for (const QString &pair : expected.split(u"; "_s))
        actual.append(pair.section(u'=', 0, 0) + u'=' + fields.value(pair.section(u'=', 0, 0)));
    QCOMPARE(actual.join(u"; "_s), expected);
}

void tst_FingerprintBuilder::embeddedBundlesAndOtherApps()
{
    DiscoveryScene scene;
    const QString group = u"ABCDE12345.com.acme.suite"_s;
    const AppInfo writer =
        scene.addApp(u"/Applications/Writer.app"_s, u"com.acme.writer"_s, {group});
    const QString contents = u"/Applications/Writer.app/Contents/"_s;
    scene.addApp(contents + u"Library/LoginItems/Writer Launcher.app"_s,
                 u"com.acme.writer.launcher"_s, {u"group.com.acme.launcher"_s});
    scene.addApp(contents + u"PlugIns/Share.appex"_s, u"com.acme.share"_s);
    scene.addApp(contents + u"Frameworks/Updater.app"_s, u"org.otherparty.Updater"_s,
                 {u"group.org.otherparty"_s});
    scene.addApp(contents + u"Frameworks/Kit.framework"_s, u"com.acme.kit"_s);
    scene.mac().addFile(contents + u"Library/LaunchServices/com.acme.writer.helperd"_s, 1);
    scene.mac().addFile(contents + u"Library/LaunchServices/org.other.helperd"_s, 1);
    scene.addApp(u"/Applications/A/B/C/Acme Sheets.app"_s, u"com.acme.sheets"_s, {group});
    scene.addApp(u"/Applications/A/B/C/D/Too Deep.app"_s, u"com.acme.deep"_s);
    scene.addApp(u"~/Applications/Acme Notes.app"_s, u"com.acme.notes"_s, {group});
    scene.addApp(u"~/.Trash/Acme Old.app"_s, u"com.acme.old"_s);
    scene.addApp(u"/Applications/Copy of Writer.app"_s, u"com.acme.WRITER"_s);
    scene.addApp(u"/Applications/Firefox.app"_s, u"org.mozilla.firefox"_s);
    const Fingerprint fp = fingerprintOf(scene, writer);
    // Bundles inside the app of its own vendor only, and they are not other installed apps.
    QCOMPARE(sorted(fp.bundleIDs), u"com.acme.share,com.acme.writer,com.acme.writer.helperd,"
                                   u"com.acme.writer.launcher"_s);
    QCOMPARE(sorted(fp.groupIDs), u"abcde12345.com.acme.suite,group.com.acme.launcher"_s);
    QCOMPARE(sorted(fp.executableNames), u"share,writer,writer launcher"_s);
    QCOMPARE(sorted(fp.otherAppIDs),
             u"com.acme.deep,com.acme.notes,com.acme.sheets,org.mozilla.firefox"_s);
    // "Too Deep" is five levels down, yet the metadata index knows it.
    QCOMPARE(fp.otherVendorAppNames,
             (QStringList{u"Acme Notes"_s, u"Acme Sheets"_s, u"Too Deep"_s}));
    QCOMPARE(fp.groupSharers.value(group.toLower()),
             (QStringList{u"Acme Notes"_s, u"Acme Sheets"_s}));

    // A two-letter vendor gives no prefix: only identifiers that continue the app's own count.
    const AppInfo tool = scene.addApp(u"/Applications/Tool.app"_s, u"com.ab.tool"_s);
    for (const QString &id : {u"com.ab.tool.helper"_s, u"com.ab.toolkit"_s})
        scene.addApp(u"/Applications/Tool.app/Contents/PlugIns/%1.appex"_s.arg(id), id);
    QCOMPARE(sorted(fingerprintOf(scene, tool).bundleIDs), u"com.ab.tool,com.ab.tool.helper"_s);
}

QTEST_GUILESS_MAIN(tst_FingerprintBuilder)
#include "tst_FingerprintBuilder.moc"
