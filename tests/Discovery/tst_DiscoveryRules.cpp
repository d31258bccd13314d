// SPDX-License-Identifier: MIT
#include "Discovery/FileDiscoveryService.h"
#include "support/DiscoveryScene.h"

#include <QFileInfo>
#include <QTest>

using namespace Qt::StringLiterals;

// Each row lays out a fake Mac and lists, in order, what discovery shows for the first app.
// One line each, "{a,b}" standing for two lines that differ there only:
//   "Mac path|identifier|group,group" an app, the one to discover first; one under /System/ is
//       the system's own
//   "path" a file of one byte, "path = N" one of N bytes, "path -> target" a link,
//   "path => program" a launch job (binary) running it; /private/var/folders/xy/T is the
//       per-user temporary folder
//   "[x] path" an item shown selected, "[ ] path" one left to the user; the bundle is left out
//       unless listed. " | key=value; ..." checks more of the item: category, size,
//       confidence, note, reason, package, protected.
class tst_DiscoveryRules : public QObject
{
    Q_OBJECT

private slots:
    void locationsAndWhatItemsCarry_data();
    void locationsAndWhatItemsCarry() { check(); }
    void namesAndOtherApps_data();
    void namesAndOtherApps() { check(); }
    void vendorAndSharedFolders_data();
    void vendorAndSharedFolders() { check(); }

private:
    static void addColumn() { QTest::addColumn<QString>("scene"); }
    static void row(const char *name, const QString &scene) { QTest::newRow(name) << scene; }
    static void row(const char *name, const char *scene) { row(name, QString::fromUtf8(scene)); }
    static void check();
};

namespace {
QStringList expanded(const QString &line)
{
    const qsizetype open = line.indexOf(u'{');
    const qsizetype close = line.indexOf(u'}', open);
    if (open < 0 || close < 0)
        return {line};
    QStringList lines;
    for (const QString &choice : line.mid(open + 1, close - open - 1).split(u','))
        lines += expanded(line.left(open) + choice + line.mid(close + 1));
    return lines;
}

AppInfo layOut(DiscoveryScene &scene, const QStringList &lines)
{
    FakeMac &mac = scene.mac();
    mac.setDarwinUserDirectories(u"/private/var/folders/xy/C"_s, u"/private/var/folders/xy/T"_s);
    AppInfo first;
    for (const QString &spec : lines) {
        if (!spec.contains(u'|'))
            continue;
        const QStringList parts = spec.split(u'|');
        const AppInfo app =
            scene.addApp(parts.at(0), parts.at(1), parts.value(2).split(u',', Qt::SkipEmptyParts));
        if (first.bundlePath.isEmpty()) {
            first = app;
            first.isSystemProtected = parts.at(0).startsWith(u"/System/"_s);
        }
    }
    for (const QString &spec : lines) {
        if (spec.contains(u'|'))
            continue;
        if (const qsizetype arrow = spec.indexOf(u" -> "_s); arrow > 0)
            mac.addSymlink(spec.left(arrow), spec.mid(arrow + 4));
        else if (const qsizetype job = spec.indexOf(u" => "_s); job > 0)
            mac.addPlist(spec.left(job),
                         QVariantMap{{u"Label"_s, QFileInfo(spec.left(job)).completeBaseName()},
                                     {u"Program"_s, spec.mid(job + 4)}},
                         FakeMac::PlistFormat::binary);
        else if (const qsizetype size = spec.indexOf(u" = "_s); size > 0)
            mac.addFile(spec.left(size), spec.mid(size + 3).toLongLong());
        else
            mac.addFile(spec, 1);
    }
    return first;
}

} // namespace

void tst_DiscoveryRules::check()
{
    QFETCH(QString, scene);
    QStringList given;
    QStringList shown;
    for (const QString &line : scene.split(u'\n')) {
        if (const QString spec = line.trimmed(); !spec.isEmpty())
            (spec.startsWith(u'[') ? shown : given) += expanded(spec);
    }
    DiscoveryScene mac;
    const AppInfo app = layOut(mac, given);
    QCOMPARE(mac.shown(FileDiscoveryService(mac.layout()).discoverFiles(app), shown), shown);
}

void tst_DiscoveryRules::locationsAndWhatItemsCarry_data()
{
    addColumn();
    row("bundle first, then the locations in order; why each was taken", R"(
        /Applications/Writer.app|com.acme.Writer|ABCDE12345.com.acme.shared
        /private/var/folders/xy/T/com.acme.writer/tmp1
        /Library/Caches/com.acme.writer.data
        ~/Library/Saved Application State/com.acme.writer.savedState/w
        ~/Library/Preferences/{com.acme.writer.plist,ByHost/com.acme.writer.0A1B.plist}
        ~/Library/Application Support/Writer/db
        ~/Library/Application Support/Acme/f
        ~/Library/{Containers/com.acme.writer,Caches/com.acme.common}/x
        ~/Library/Group Containers/ABCDE12345.com.acme.shared/f
        ~/Library/Preferences/com.other.app.plist
        ~/Library/Logs/DiagnosticReports/{Writer-2024-05-01-101010.ips,Other-2024.ips}
        /Library/Logs/DiagnosticReports/{Retired/Writer-1.ips,Writer-2.ips}
        /usr/local/bin/writer -> /Applications/Writer.app/Contents/MacOS/Writer
        /opt/homebrew/bin/wr -> ../../../Applications/Writer.app/Contents/MacOS/Writer
        /usr/local/bin/twin -> /Applications/Writer.app.old/x
        /usr/local/bin/other -> /Applications/Other.app/x
        /usr/local/bin/writer-copy
        [x] /Applications/Writer.app | category=application; protected=no
        [x] ~/Library/Application Support/Acme | reason=vendor folder Acme
        [x] ~/Library/Application Support/Writer | category=applicationSupport; reason=name Writer
        [x] ~/Library/Containers/com.acme.writer | category=containers
        [x] ~/Library/Group Containers/ABCDE12345.com.acme.shared | reason=app group abcde12345.com.acme.shared
        [x] ~/Library/Preferences/com.acme.writer.plist | reason=bundle identifier com.acme.writer
        [x] ~/Library/Preferences/ByHost/com.acme.writer.0A1B.plist | category=preferences
        [x] ~/Library/Caches/com.acme.common | reason=vendor com.acme
        [x] ~/Library/Saved Application State/com.acme.writer.savedState | category=savedState
        [x] ~/Library/Logs/DiagnosticReports/Writer-2024-05-01-101010.ips
        [x] /Library/Caches/com.acme.writer.data | category=caches; confidence=1
        [x] /Library/Logs/DiagnosticReports/Writer-2.ips
        [x] /private/var/folders/xy/T/com.acme.writer | category=temporary
        [x] /usr/local/bin/writer | reason=link into the app
        [x] /opt/homebrew/bin/wr
    )");
    row("the system's own app", R"(
        /System/Applications/Chess.app|com.apple.Chess
        ~/Library/Containers/com.apple.chess/x
        [ ] /System/Applications/Chess.app | protected=yes; note=Part of macOS
        [x] ~/Library/Containers/com.apple.chess | protected=no
    )");
    row("by name, even unreadable; by program; not when starting another app; helpers", R"(
        /Applications/Writer.app|com.acme.writer
        /Applications/Other.app|org.other.app
        /Applications/Acme Sheets.app|com.acme.sheets
        ~/Library/LaunchAgents/com.acme.writer.agent.plist => /usr/bin/true
        ~/Library/LaunchAgents/com.acme.writer.broken.plist
        /Library/LaunchDaemons/org.toolkit.daemon.plist => /Applications/Writer.app/Contents/MacOS/Writer
        /Library/LaunchAgents/com.acme.writer.other.plist => /Applications/Other.app/Contents/MacOS/agent
        /Library/LaunchAgents/com.acme.writer.gone.plist => /Applications/Gone.app/Contents/MacOS/agent
        /Library/LaunchAgents/org.unrelated.plist => /usr/bin/true
        /Library/PrivilegedHelperTools/{tool,tool.x,com.acme.writer.h,com.acme.helper}
        /Library/PrivilegedHelperTools/sys = 300
        ~/Library/LaunchAgents/com.acme.writer.u.plist => /Library/PrivilegedHelperTools/tool
        /Library/LaunchDaemons/com.acme.writer.d.plist => /Library/PrivilegedHelperTools/sys
        ~/Library/LaunchAgents/com.acme.writer.a.plist => /Library/PrivilegedHelperTools/com.acme.writer.h
        /Library/LaunchDaemons/com.acme.writer.helper.plist => /Library/PrivilegedHelperTools/com.acme.helper
        /Applications/Writer.app/Contents/Library/LoginItems/Writer Helper.app/Contents/MacOS/h
        ~/Library/LaunchAgents/com.acme.writer.login.plist => /Applications/Writer.app/Contents/Library/LoginItems/Writer Helper.app/Contents/MacOS/h
        [ ] /Library/PrivilegedHelperTools/com.acme.helper | note=Shared with Acme Sheets, left unselected
        [x] /Library/PrivilegedHelperTools/com.acme.writer.h
        [x] ~/Library/LaunchAgents/com.acme.writer.{a,agent,broken,login,u}.plist
        [ ] /Library/PrivilegedHelperTools/tool
        [x] /Library/LaunchAgents/com.acme.writer.gone.plist
        [x] /Library/LaunchDaemons/com.acme.writer.d.plist | category=launchDaemons
        [x] /Library/PrivilegedHelperTools/sys | category=helperTools; size=300
        [x] /Library/LaunchDaemons/{com.acme.writer.helper,org.toolkit.daemon}.plist
    )");
}

void tst_DiscoveryRules::namesAndOtherApps_data()
{
    addColumn();
    row("separator, version, capital, run-on; Library, Shared, the home; shared folders", R"(
        /Applications/Writer.app|com.acme.writer
        ~/Library/Application Support/{Writer (Safe Mode),Writer2025.1,Writerly,acme.com}/f
        ~/Library/Caches/WriterUpdater/f
        ~/Library/Logs/Writer_debug.log
        ~/Library/Preferences/com.acme.writer2.plist
        ~/Library/{Writer,Acme15,Acme1x}/f
        /Users/Shared/Acme/f
        ~/{.Writer_7F3A,.writer,.writer-cli,.writerly,writer,.config/writer,.config/other}/f
        ~/.writer_settings
        ~/Library/Caches/com.plausiblelabs.crashreporter.data/com.acme.writer/f
        ~/Library/Caches/SentryCrash/{Writer,Other}/f
        ~/Library/Application Support/FileProvider/com.acme.writer.FileProvider/f
        ~/Library/Caches/com.apple.helpd/Generated/Writer Help 1.0/f
        [x] ~/Library/Application Support/{Writer (Safe Mode),Writer2025.1,acme.com}
        [x] ~/Library/Preferences/com.acme.writer2.plist
        [ ] ~/Library/Caches/WriterUpdater
        [x] ~/Library/Logs/Writer_debug.log
        [x] ~/Library/Caches/com.plausiblelabs.crashreporter.data/com.acme.writer
        [x] ~/Library/Caches/SentryCrash/Writer
        [x] ~/Library/Application Support/FileProvider/com.acme.writer.FileProvider
        [x] ~/Library/Caches/com.apple.helpd/Generated/Writer Help 1.0
        [x] ~/Library/{Acme15,Writer}
        [x] /Users/Shared/Acme
        [x] ~/{.Writer_7F3A,.writer,.writer-cli,.writer_settings,.config/writer}
    )");
    row("vendor and kind words dropped", R"(
        /Applications/Acme Quill Desktop.app|com.acme.q1
        ~/Library/Caches/{Quill,Acme Quill}/f
        [x] ~/Library/Caches/{Acme Quill,Quill}
    )");
    row("dropped words give way to an app of that name", R"(
        /Applications/Acme Quill.app|com.acme.q1
        /Applications/Quill.app|org.quill.app
        ~/Library/Caches/Quill/f
    )");
    row("the app's name inside another identifier", R"(
        /Applications/Webby.app|com.corp.spark
        ~/Library/Preferences/{com.webby.meetings.plist,com.corp2.webbyish.plist,webby.plist.d.x}
        [ ] ~/Library/Preferences/com.webby.meetings.plist
        [x] ~/Library/Preferences/webby.plist.d.x
    )");
    row("an installed app's identifier outranks the name", R"(
        /Applications/Webby.app|com.corp.spark
        /Applications/Meet.app|com.webby.meetings
        ~/Library/Preferences/com.webby.meetings.plist
    )");
    row("tool folders shown, the home's own never", R"(
        /Applications/Local.app|com.acme.local
        ~/{.local,.Local,.config/local,.cache}/f
        ~/.ssh/local
        [ ] ~/{.Local,.local}
        [x] ~/.config/local
    )");
    row("short name of four letters", R"(
        /Applications/Quill Editor.app|com.acme.quill
        ~/.quill/f
        [x] ~/.quill
    )");
    row("short name of three letters", R"(
        /Applications/Ink Editor.app|com.acme.ink
        ~/.ink/f
    )");
    row("longer name, versioned identifier, linked Applications folder, linked vendor folder", R"(
        /Applications/Writer.app|com.acme.writer
        /Applications/Writer Pro.app|com.other.pro
        /Applications/Writer 2.app|com.acme.writer2
        /Applications/Draw.app|com.abc.draw
        /opt/Suite/Sheets.app|com.acme.sheets
        /Applications/Suite -> ../opt/Suite
        /opt/Suite/loop -> ../../Applications
        ~/Library/Application Support/{Writer Pro,Writer Backup}/f
        ~/Library/Preferences/{com.acme.writer2,com.acme.sheets}.plist
        ~/Library/Logs/Acme Tools/{Writer,Other}/log
        /opt/x/Writer/f
        /Users/Shared/Acme -> ../../opt/x
        [x] ~/Library/Application Support/Writer Backup
        [x] ~/Library/Logs/Acme Tools/Writer
    )");
    row("a group signed by an app of another namespace", R"(
        /Applications/Cyber.app|ch.sudo.cyber|ABCDE12345.duck
        /Applications/Mountain.app|io.mountain|ABCDE12345.duck
        ~/Library/Preferences/ABCDE12345.duck.plist
        [ ] ~/Library/Preferences/ABCDE12345.duck.plist
    )");
    row("vendor files naming another installed app", R"(
        /Applications/Acme Edge.app|com.acme.edgemac
        /Applications/Acme Word.app|com.acme.word
        ~/Library/Preferences/{com.acme.Word7F3A,com.acme.WordHelper,com.acme.shared}.plist
        [ ] ~/Library/Preferences/com.acme.shared.plist
    )");
    row("a namespace-wide identifier matches only whole", R"(
        /Applications/Odd.app|com.apple
        ~/Library/Preferences/{com.apple.finder.plist,com.apple.plist}
        [x] ~/Library/Preferences/com.apple.plist
    )");
}

void tst_DiscoveryRules::vendorAndSharedFolders_data()
{
    addColumn();
    const QString acme = QString::fromUtf8(R"(
        ~/Library/Application Support/Acme/{Writer,com.acme.writer.db,writer.savedState}/f
        ~/Library/Application Support/Acme/{Sheets,Common,com.acme.shared}/f)");
    row("vendor folder, no other Acme app: whole", acme + QString::fromUtf8(R"(
        /Applications/Writer.app|com.acme.writer
        [x] ~/Library/Application Support/Acme | confidence=0.7; note=Shared Acme files, no other Acme apps installed
    )"));
    row("vendor folder, Acme Sheets installed: searched inside", acme + QString::fromUtf8(R"(
        /Applications/Writer.app|com.acme.writer
        /Applications/Acme Sheets.app|com.acme.sheets
        [x] ~/Library/Application Support/Acme/Writer | confidence=1; note=
        [x] ~/Library/Application Support/Acme/{com.acme.writer.db,writer.savedState}
    )"));
    row("vendor folder of an app called like its vendor", acme + QString::fromUtf8(R"(
        /Applications/Acme.app|com.acme.writer
        /Applications/Acme Sheets.app|com.acme.sheets
        [x] ~/Library/Application Support/Acme | confidence=1
    )"));
    row("vendor-named folder, three letters", R"(
        /Applications/Draw.app|com.abc.draw
        ~/Library/Logs/Abc Tools/Draw/log
    )");
    row("the app's entry in a vendor folder of Preferences", R"(
        /Applications/Acme Draw.app|com.acme.d1
        /Applications/Acme Sheets.app|com.acme.sheets
        ~/Library/Preferences/Acme/{Draw,Sheets}/f
        [x] ~/Library/Preferences/Acme/Draw
    )");
    row("an app group shared with other apps", R"(
        /Applications/Acme/Writer.app|com.acme.writer|ABCDE12345.com.acme.suite,group.com.acme.writer
        /Applications/Acme/Acme Sheets.app|com.acme.sheets|ABCDE12345.com.acme.suite
        /Applications/Acme Slides.app|com.acme.slides|ABCDE12345.com.acme.suite
        ~/Library/Group Containers/{ABCDE12345.com.acme.suite,group.com.acme.writer}/x
        [ ] ~/Library/Group Containers/ABCDE12345.com.acme.suite | confidence=0.7; note=Shared with Acme Sheets and Acme Slides, left unselected
        [x] ~/Library/Group Containers/group.com.acme.writer | note=
    )");
    row("electron namespace: no vendor files, no vendor name", R"(
        /Applications/Notes.app|com.electron.notes|ABCDE12345.ns
        /Applications/{Chat,Mail,Docs}.app|com.electron.chat|ABCDE12345.ns
        ~/Library/Application Support/{com.electron.chat,com.electron.shared}/x
        ~/Library/Preferences/com.electron.notes.plist
        ~/Library/Caches/ABCDE12345.ns/x
        [x] ~/Library/Preferences/com.electron.notes.plist
        [ ] ~/Library/Caches/ABCDE12345.ns | note=Shared with 3 other Vendor apps, left unselected
    )");
    for (const auto &[app, folder] :
         {std::pair{"ByHost", "~/Library/Preferences/ByHost/x.plist"},
          {"DiagnosticReports", "~/Library/Logs/DiagnosticReports/x.ips"},
          {"Address Book", "~/Library/Application Support/AddressBook/x"},
          {"Caches", "~/Library/Caches/x"},
          {"Profile", "~/.profile"}})
        row(app, u"/Applications/%1.app|com.acme.x1\n%2"_s.arg(QString::fromUtf8(app),
                                                               QString::fromUtf8(folder)));
}

QTEST_GUILESS_MAIN(tst_DiscoveryRules)
#include "tst_DiscoveryRules.moc"
