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
    void nameContinuations_data();
    void nameContinuations() { check(); }
    void ownFoldersOfVendorsAndApps_data();
    void ownFoldersOfVendorsAndApps() { check(); }
    void sharedFolders_data();
    void sharedFolders() { check(); }
    void linksAndHomeDotEntries_data();
    void linksAndHomeDotEntries() { check(); }
    void otherAppsKeepTheirs_data();
    void otherAppsKeepTheirs() { check(); }
    void launchJobs_data();
    void launchJobs() { check(); }

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

QString field(const FileItem &item, const QString &key)
{
    if (key == u"category"_s)
        return caseName(item.category);
    if (key == u"size"_s)
        return QString::number(item.size);
    if (key == u"confidence"_s)
        return QString::number(item.confidence);
    if (key == u"note"_s)
        return item.note.value_or(QString());
    if (key == u"reason"_s)
        return item.reason;
    if (key == u"package"_s)
        return item.packageID.value_or(QString());
    if (key == u"protected"_s)
        return item.isProtected ? u"yes"_s : u"no"_s;
    return u"(no such key)"_s;
}

// The items as the rows write them, with the fields the expected rows ask for.
QStringList rows(const DiscoveryScene &scene, const QList<FileItem> &items,
                 const QStringList &expected)
{
    QHash<QString, QStringList> keys;
    for (const QString &row : expected) {
        QStringList &asked = keys[row.mid(4).section(u" | "_s, 0, 0)];
        for (const QString &pair : row.section(u" | "_s, 1).split(u"; "_s, Qt::SkipEmptyParts))
            asked.append(pair.section(u'=', 0, 0));
    }
    QStringList result;
    for (const FileItem &item : items) {
        const QString path = scene.macPathOf(item.path);
        if (&item == &items.first() && !keys.contains(path))
            continue;
        QStringList fields;
        for (const QString &key : keys.value(path))
            fields.append(key + u'=' + field(item, key));
        result.append((item.isSelected ? u"[x] "_s : u"[ ] "_s) + path +
                      (fields.isEmpty() ? QString() : u" | "_s + fields.join(u"; "_s)));
    }
    return result;
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
    QCOMPARE(rows(mac, FileDiscoveryService(mac.layout()).discoverFiles(app), shown), shown);
}

void tst_DiscoveryRules::locationsAndWhatItemsCarry_data()
{
    addColumn();
    row("bundle first, then the locations in order", R"(
        /Applications/Writer.app|com.acme.Writer
        /private/var/folders/xy/T/com.acme.writer/tmp1
        /Library/Caches/com.acme.writer.data
        ~/Library/Saved Application State/com.acme.writer.savedState/w
        ~/Library/Preferences/{com.acme.writer.plist,ByHost/com.acme.writer.0A1B.plist}
        ~/Library/Application Support/Writer/db = 100
        ~/Library/Containers/com.acme.writer/x
        ~/Library/Preferences/com.other.app.plist
        [x] /Applications/Writer.app | category=application; protected=no
        [x] ~/Library/Application Support/Writer | category=applicationSupport; size=100
        [x] ~/Library/Containers/com.acme.writer | category=containers
        [x] ~/Library/Preferences/com.acme.writer.plist | category=preferences
        [x] ~/Library/Preferences/ByHost/com.acme.writer.0A1B.plist
        [x] ~/Library/Saved Application State/com.acme.writer.savedState | category=savedState
        [x] /Library/Caches/com.acme.writer.data | category=caches; confidence=1
        [x] /private/var/folders/xy/T/com.acme.writer | category=temporary
    )");
    row("the system's own app", R"(
        /System/Applications/Chess.app|com.apple.Chess
        ~/Library/Containers/com.apple.chess/x
        [ ] /System/Applications/Chess.app | protected=yes; note=Part of macOS
        [x] ~/Library/Containers/com.apple.chess | protected=no
    )");
    row("why each was taken", R"(
        /Applications/Writer.app|com.acme.writer|ABCDE12345.com.acme.shared
        ~/Library/Preferences/com.acme.writer.plist
        ~/Library/Group Containers/ABCDE12345.com.acme.shared/f
        ~/Library/Application Support/{Writer,Acme}/f
        ~/Library/Caches/com.acme.common/f
        /usr/local/bin/w -> /Applications/Writer.app/Contents/MacOS/Writer
        [x] ~/Library/Application Support/Acme | reason=vendor folder Acme
        [x] ~/Library/Application Support/Writer | reason=name Writer
        [x] ~/Library/Group Containers/ABCDE12345.com.acme.shared | reason=app group abcde12345.com.acme.shared
        [x] ~/Library/Preferences/com.acme.writer.plist | reason=bundle identifier com.acme.writer
        [x] ~/Library/Caches/com.acme.common | reason=vendor com.acme
        [x] /usr/local/bin/w | reason=link into the app
    )");
    row("crash reports", R"(
        /Applications/Writer.app|com.acme.writer
        ~/Library/Logs/DiagnosticReports/{Writer-2024-05-01-101010.ips,Other-2024.ips}
        /Library/Logs/DiagnosticReports/{Retired/Writer-1.ips,Writer-2.ips}
        [x] ~/Library/Logs/DiagnosticReports/Writer-2024-05-01-101010.ips
        [x] /Library/Logs/DiagnosticReports/Writer-2.ips
    )");
}

void tst_DiscoveryRules::nameContinuations_data()
{
    addColumn();
    row("separator, version, capital, run-on", R"(
        /Applications/Writer.app|com.acme.writer
        ~/Library/Application Support/{Writer (Safe Mode),Writer2025.1,Writerly}/f
        ~/Library/Caches/WriterUpdater/f
        ~/Library/Logs/Writer_debug.log
        [x] ~/Library/Application Support/{Writer (Safe Mode),Writer2025.1}
        [ ] ~/Library/Caches/WriterUpdater
        [x] ~/Library/Logs/Writer_debug.log
    )");
    row("an installed app with the longer name keeps it", R"(
        /Applications/Writer.app|com.acme.writer
        /Applications/Writer Pro.app|com.other.pro
        ~/Library/Application Support/{Writer Pro,Writer Backup}/f
        [x] ~/Library/Application Support/Writer Backup
    )");
    row("identifier with a version", R"(
        /Applications/Writer.app|com.acme.writer
        ~/Library/Preferences/com.acme.writer2.plist
        [x] ~/Library/Preferences/com.acme.writer2.plist
    )");
    row("versioned identifier of an installed app", R"(
        /Applications/Writer.app|com.acme.writer
        /Applications/Writer 2.app|com.acme.writer2
        ~/Library/Preferences/com.acme.writer2.plist
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
}

void tst_DiscoveryRules::ownFoldersOfVendorsAndApps_data()
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
    row("vendor-named folder, four letters", R"(
        /Applications/Writer.app|com.acme.writer
        /Applications/Draw.app|com.abc.draw
        ~/Library/Logs/Acme Tools/{Writer,Other}/log
        [x] ~/Library/Logs/Acme Tools/Writer
    )");
    row("vendor-named folder, three letters", R"(
        /Applications/Draw.app|com.abc.draw
        ~/Library/Logs/Abc Tools/Draw/log
    )");
    row("Library, Shared, web site, versioned vendor", R"(
        /Applications/Writer.app|com.acme.writer
        ~/Library/{Writer,Acme15,Acme1x,Application Support/acme.com}/f
        /Users/Shared/Acme/f
        [x] ~/Library/{Application Support/acme.com,Acme15,Writer}
        [x] /Users/Shared/Acme
    )");
    row("a linked vendor folder where every user writes", R"(
        /Applications/Writer.app|com.acme.writer
        /Applications/Acme Sheets.app|com.acme.sheets
        /opt/x/Writer/f
        /Users/Shared/Acme -> ../../opt/x
    )");
    row("the app's entry in a vendor folder of Preferences", R"(
        /Applications/Acme Draw.app|com.acme.d1
        /Applications/Acme Sheets.app|com.acme.sheets
        ~/Library/Preferences/Acme/{Draw,Sheets}/f
        [x] ~/Library/Preferences/Acme/Draw
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

void tst_DiscoveryRules::sharedFolders_data()
{
    addColumn();
    row("one entry per app, one level down", R"(
        /Applications/Writer.app|com.acme.writer
        ~/Library/Caches/com.plausiblelabs.crashreporter.data/com.acme.writer/f
        ~/Library/Caches/SentryCrash/{Writer,Other}/f
        ~/Library/Application Support/FileProvider/com.acme.writer.FileProvider/f
        ~/Library/Caches/com.apple.helpd/Generated/Writer Help 1.0/f
        [x] ~/Library/Caches/com.plausiblelabs.crashreporter.data/com.acme.writer
        [x] ~/Library/Caches/SentryCrash/Writer
        [x] ~/Library/Application Support/FileProvider/com.acme.writer.FileProvider
        [x] ~/Library/Caches/com.apple.helpd/Generated/Writer Help 1.0
    )");
    row("an app group shared with other apps", R"(
        /Applications/Acme/Writer.app|com.acme.writer|ABCDE12345.com.acme.suite,group.com.acme.writer
        /Applications/Acme/Acme Sheets.app|com.acme.sheets|ABCDE12345.com.acme.suite
        /Applications/Acme Slides.app|com.acme.slides|ABCDE12345.com.acme.suite
        ~/Library/Group Containers/{ABCDE12345.com.acme.suite,group.com.acme.writer}/x
        [ ] ~/Library/Group Containers/ABCDE12345.com.acme.suite | confidence=0.7; note=Shared with Acme Sheets and Acme Slides, left unselected
        [x] ~/Library/Group Containers/group.com.acme.writer | note=
    )");
    row("electron namespace takes no vendor files", R"(
        /Applications/Notes.app|com.electron.notes
        /Applications/Chat.app|com.electron.chat
        ~/Library/Application Support/{com.electron.chat,com.electron.shared}/x
        ~/Library/Preferences/com.electron.notes.plist
        [x] ~/Library/Preferences/com.electron.notes.plist
    )");
}

void tst_DiscoveryRules::linksAndHomeDotEntries_data()
{
    addColumn();
    row("links into the bundle, absolute and relative", R"(
        /Applications/Writer.app|com.acme.writer
        /usr/local/bin/writer -> /Applications/Writer.app/Contents/MacOS/Writer
        /opt/homebrew/bin/wr -> ../../../Applications/Writer.app/Contents/MacOS/Writer
        /usr/local/bin/twin -> /Applications/Writer.app.old/x
        /usr/local/bin/other -> /Applications/Other.app/x
        /usr/local/bin/writer-copy
        [x] /usr/local/bin/writer
        [x] /opt/homebrew/bin/wr
    )");
    row("continued names, and in .config", R"(
        /Applications/Writer.app|com.acme.writer
        ~/{.Writer_7F3A,.writer,.writer-cli,.writerly,writer,.config/writer,.config/other}/f
        ~/.writer_settings
        [x] ~/{.Writer_7F3A,.writer,.writer-cli,.writer_settings,.config/writer}
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
}

void tst_DiscoveryRules::otherAppsKeepTheirs_data()
{
    addColumn();
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
    row("apps in a linked Applications folder, loop ended", R"(
        /Applications/Writer.app|com.acme.writer
        /opt/Suite/Sheets.app|com.acme.sheets
        /Applications/Suite -> ../opt/Suite
        /opt/Suite/loop -> ../../Applications
        ~/Library/Preferences/com.acme.sheets.plist
    )");
}

void tst_DiscoveryRules::launchJobs_data()
{
    addColumn();
    row("by name, even unreadable; by program; not when starting another app", R"(
        /Applications/Writer.app|com.acme.writer
        /Applications/Other.app|org.other.app
        ~/Library/LaunchAgents/com.acme.writer.agent.plist => /usr/bin/true
        ~/Library/LaunchAgents/com.acme.writer.broken.plist
        /Library/LaunchDaemons/org.toolkit.daemon.plist => /Applications/Writer.app/Contents/MacOS/Writer
        /Library/LaunchAgents/com.acme.writer.other.plist => /Applications/Other.app/Contents/MacOS/agent
        /Library/LaunchAgents/com.acme.writer.gone.plist => /Applications/Gone.app/Contents/MacOS/agent
        /Library/LaunchAgents/org.unrelated.plist => /usr/bin/true
        [x] ~/Library/LaunchAgents/com.acme.writer.{agent,broken}.plist
        [x] /Library/LaunchAgents/com.acme.writer.gone.plist
        [x] /Library/LaunchDaemons/org.toolkit.daemon.plist
    )");
    row("helper named by a job the user can write", R"(
        /Applications/Writer.app|com.acme.writer
        /Library/PrivilegedHelperTools/tool
        ~/Library/LaunchAgents/com.acme.writer.agent.plist => /Library/PrivilegedHelperTools/tool
        [x] ~/Library/LaunchAgents/com.acme.writer.agent.plist
        [ ] /Library/PrivilegedHelperTools/tool
    )");
    row("helper named by a system job", R"(
        /Applications/Writer.app|com.acme.writer
        /Library/PrivilegedHelperTools/tool = 300
        /Library/LaunchDaemons/com.acme.writer.d.plist => /Library/PrivilegedHelperTools/tool
        [x] /Library/LaunchDaemons/com.acme.writer.d.plist | category=launchDaemons
        [x] /Library/PrivilegedHelperTools/tool | category=helperTools; size=300
    )");
    row("a user job's helper that is the app's by name", R"(
        /Applications/Writer.app|com.acme.writer
        /Library/PrivilegedHelperTools/{tool.x,com.acme.writer.h}
        ~/Library/LaunchAgents/com.acme.writer.a.plist => /Library/PrivilegedHelperTools/com.acme.writer.h
        [x] /Library/PrivilegedHelperTools/com.acme.writer.h
        [x] ~/Library/LaunchAgents/com.acme.writer.a.plist
    )");
    row("a shared helper found twice keeps its first verdict", R"(
        /Applications/Writer.app|com.acme.writer
        /Applications/Acme Sheets.app|com.acme.sheets
        /Library/PrivilegedHelperTools/com.acme.helper
        /Library/LaunchDaemons/com.acme.writer.helper.plist => /Library/PrivilegedHelperTools/com.acme.helper
        [ ] /Library/PrivilegedHelperTools/com.acme.helper | note=Shared with Acme Sheets, left unselected
        [x] /Library/LaunchDaemons/com.acme.writer.helper.plist
    )");
    row("a job that starts a helper app nested in the bundle", R"(
        /Applications/Writer.app|com.acme.writer
        /Applications/Writer.app/Contents/Library/LoginItems/Writer Helper.app/Contents/MacOS/h
        ~/Library/LaunchAgents/com.acme.writer.login.plist => /Applications/Writer.app/Contents/Library/LoginItems/Writer Helper.app/Contents/MacOS/h
        [x] ~/Library/LaunchAgents/com.acme.writer.login.plist
    )");
}

QTEST_GUILESS_MAIN(tst_DiscoveryRules)
#include "tst_DiscoveryRules.moc"
