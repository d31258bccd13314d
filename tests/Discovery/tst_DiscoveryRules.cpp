// SPDX-License-Identifier: MIT
#include "Discovery/FileDiscoveryService.h"
#include "support/DiscoveryScene.h"

#include <QFileInfo>
#include <QTest>

using namespace Qt::StringLiterals;

// Each row lays out a fake Mac and lists, in order, what discovery shows for the first app:
// "[x] path" for a selected item, "[ ] path" for one left to the user. The bundle is left out
// unless the row lists it. " | key=value; ..." after a path checks more of that item:
// category, size, confidence, note, reason, package, protected.
//   apps:  "Mac path|identifier|group,group", the app to discover first; one under /System/ is
//          the system's own
//   files: "path" a file of one byte, "path = N" one of N bytes, "path -> target" a link,
//          "path => program" a launch job (binary) running it; the per-user temporary folder
//          is /private/var/folders/xy/T
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
    static void addColumns();
    static void check();
};

namespace {
AppInfo layOut(DiscoveryScene &scene, const QStringList &apps, const QStringList &files)
{
    FakeMac &mac = scene.mac();
    mac.setDarwinUserDirectories(u"/private/var/folders/xy/C"_s, u"/private/var/folders/xy/T"_s);
    AppInfo first;
    for (const QString &spec : apps) {
        const QStringList parts = spec.split(u'|');
        const AppInfo app =
            scene.addApp(parts.at(0), parts.at(1), parts.value(2).split(u',', Qt::SkipEmptyParts));
        if (first.bundlePath.isEmpty()) {
            first = app;
            first.isSystemProtected = parts.at(0).startsWith(u"/System/"_s);
        }
    }
    for (const QString &spec : files) {
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

const QString writer = u"/Applications/Writer.app|com.acme.writer"_s;
const QString support = u"~/Library/Application Support/"_s;
} // namespace

void tst_DiscoveryRules::addColumns()
{
    QTest::addColumn<QStringList>("apps");
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QStringList>("shown");
}

void tst_DiscoveryRules::check()
{
    QFETCH(QStringList, apps);
    QFETCH(QStringList, files);
    QFETCH(QStringList, shown);
    DiscoveryScene scene;
    const AppInfo app = layOut(scene, apps, files);
    QCOMPARE(rows(scene, FileDiscoveryService().discoverFiles(app), shown), shown);
}

void tst_DiscoveryRules::locationsAndWhatItemsCarry_data()
{
    addColumns();
    QTest::newRow("bundle first, then the locations in order")
        << QStringList{u"/Applications/Writer.app|com.acme.Writer"_s}
        << QStringList{u"/private/var/folders/xy/T/com.acme.writer/tmp1"_s,
                       u"/Library/Caches/com.acme.writer.data"_s,
                       u"~/Library/Saved Application State/com.acme.writer.savedState/w"_s,
                       u"~/Library/Preferences/com.acme.writer.plist"_s,
                       u"~/Library/Preferences/ByHost/com.acme.writer.0A1B.plist"_s,
                       support + u"Writer/db = 100"_s,
                       u"~/Library/Containers/com.acme.writer/x"_s,
                       u"~/Library/Preferences/com.other.app.plist"_s}
        << QStringList{
               u"[x] /Applications/Writer.app | category=application; protected=no"_s,
               u"[x] "_s + support + u"Writer | category=applicationSupport; size=100"_s,
               u"[x] ~/Library/Containers/com.acme.writer | category=containers"_s,
               u"[x] ~/Library/Preferences/com.acme.writer.plist | category=preferences"_s,
               u"[x] ~/Library/Preferences/ByHost/com.acme.writer.0A1B.plist"_s,
               u"[x] ~/Library/Saved Application State/com.acme.writer.savedState"
               u" | category=savedState"_s,
               u"[x] /Library/Caches/com.acme.writer.data | category=caches; confidence=1"_s,
               u"[x] /private/var/folders/xy/T/com.acme.writer | category=temporary"_s};
    QTest::newRow("the system's own app")
        << QStringList{u"/System/Applications/Chess.app|com.apple.Chess"_s}
        << QStringList{u"~/Library/Containers/com.apple.chess/x"_s}
        << QStringList{u"[ ] /System/Applications/Chess.app | protected=yes; note=Part of macOS"_s,
                       u"[x] ~/Library/Containers/com.apple.chess | protected=no"_s};
    QTest::newRow("why each was taken")
        << QStringList{u"/Applications/Writer.app|com.acme.writer|ABCDE12345.com.acme.shared"_s}
        << QStringList{u"~/Library/Preferences/com.acme.writer.plist"_s,
                       u"~/Library/Group Containers/ABCDE12345.com.acme.shared/f"_s,
                       support + u"Writer/f"_s,
                       support + u"Acme/f"_s,
                       u"~/Library/Caches/com.acme.common/f"_s,
                       u"/usr/local/bin/w -> /Applications/Writer.app/Contents/MacOS/Writer"_s}
        << QStringList{u"[x] "_s + support + u"Acme | reason=vendor folder Acme"_s,
                       u"[x] "_s + support + u"Writer | reason=name Writer"_s,
                       u"[x] ~/Library/Group Containers/ABCDE12345.com.acme.shared"
                       u" | reason=app group abcde12345.com.acme.shared"_s,
                       u"[x] ~/Library/Preferences/com.acme.writer.plist"
                       u" | reason=bundle identifier com.acme.writer"_s,
                       u"[x] ~/Library/Caches/com.acme.common | reason=vendor com.acme"_s,
                       u"[x] /usr/local/bin/w | reason=link into the app"_s};
    const QString reports = u"~/Library/Logs/DiagnosticReports/"_s;
    QTest::newRow("crash reports")
        << QStringList{writer}
        << QStringList{reports + u"Writer-2024-05-01-101010.ips"_s, reports + u"Other-2024.ips"_s,
                       u"/Library/Logs/DiagnosticReports/Retired/Writer-1.ips"_s,
                       u"/Library/Logs/DiagnosticReports/Writer-2.ips"_s}
        << QStringList{u"[x] "_s + reports + u"Writer-2024-05-01-101010.ips"_s,
                       u"[x] /Library/Logs/DiagnosticReports/Writer-2.ips"_s};
}

void tst_DiscoveryRules::nameContinuations_data()
{
    addColumns();
    QTest::newRow("separator, version, capital, run-on")
        << QStringList{writer}
        << QStringList{support + u"Writer (Safe Mode)/f"_s, support + u"Writer2025.1/f"_s,
                       support + u"Writerly/f"_s, u"~/Library/Caches/WriterUpdater/f"_s,
                       u"~/Library/Logs/Writer_debug.log"_s}
        << QStringList{u"[x] "_s + support + u"Writer (Safe Mode)"_s,
                       u"[x] "_s + support + u"Writer2025.1"_s,
                       u"[ ] ~/Library/Caches/WriterUpdater"_s,
                       u"[x] ~/Library/Logs/Writer_debug.log"_s};
    QTest::newRow("an installed app with the longer name keeps it")
        << QStringList{writer, u"/Applications/Writer Pro.app|com.other.pro"_s}
        << QStringList{support + u"Writer Pro/f"_s, support + u"Writer Backup/f"_s}
        << QStringList{u"[x] "_s + support + u"Writer Backup"_s};
    QTest::newRow("identifier with a version")
        << QStringList{writer} << QStringList{u"~/Library/Preferences/com.acme.writer2.plist"_s}
        << QStringList{u"[x] ~/Library/Preferences/com.acme.writer2.plist"_s};
    QTest::newRow("versioned identifier of an installed app")
        << QStringList{writer, u"/Applications/Writer 2.app|com.acme.writer2"_s}
        << QStringList{u"~/Library/Preferences/com.acme.writer2.plist"_s} << QStringList{};
    QTest::newRow("vendor and kind words dropped")
        << QStringList{u"/Applications/Acme Quill Desktop.app|com.acme.q1"_s}
        << QStringList{u"~/Library/Caches/Quill/f"_s, u"~/Library/Caches/Acme Quill/f"_s}
        << QStringList{u"[x] ~/Library/Caches/Acme Quill"_s, u"[x] ~/Library/Caches/Quill"_s};
    QTest::newRow("dropped words give way to an app of that name")
        << QStringList{u"/Applications/Acme Quill.app|com.acme.q1"_s,
                       u"/Applications/Quill.app|org.quill.app"_s}
        << QStringList{u"~/Library/Caches/Quill/f"_s} << QStringList{};
    QTest::newRow("the app's name inside another identifier")
        << QStringList{u"/Applications/Webby.app|com.corp.spark"_s}
        << QStringList{u"~/Library/Preferences/com.webby.meetings.plist"_s,
                       u"~/Library/Preferences/com.corp2.webbyish.plist"_s,
                       u"~/Library/Preferences/webby.plist.d.x"_s}
        << QStringList{u"[ ] ~/Library/Preferences/com.webby.meetings.plist"_s,
                       u"[x] ~/Library/Preferences/webby.plist.d.x"_s};
    QTest::newRow("an installed app's identifier outranks the name")
        << QStringList{u"/Applications/Webby.app|com.corp.spark"_s,
                       u"/Applications/Meet.app|com.webby.meetings"_s}
        << QStringList{u"~/Library/Preferences/com.webby.meetings.plist"_s} << QStringList{};
}

void tst_DiscoveryRules::ownFoldersOfVendorsAndApps_data()
{
    addColumns();
    QStringList acme;
    for (const char16_t *name : {u"Writer", u"com.acme.writer.db", u"writer.savedState", u"Sheets",
                                 u"Common", u"com.acme.shared"})
        acme.append(support + u"Acme/"_s + QString::fromUtf16(name) + u"/f"_s);
    const QString sheets = u"/Applications/Acme Sheets.app|com.acme.sheets"_s;
    QTest::newRow("vendor folder, no other Acme app: whole")
        << QStringList{writer} << acme
        << QStringList{u"[x] "_s + support +
                       u"Acme | confidence=0.7; note=Shared Acme files, no other Acme apps "
                       u"installed"_s};
    QTest::newRow("vendor folder, Acme Sheets installed: searched inside")
        << QStringList{writer, sheets} << acme
        << QStringList{u"[x] "_s + support + u"Acme/Writer | confidence=1; note="_s,
                       u"[x] "_s + support + u"Acme/com.acme.writer.db"_s,
                       u"[x] "_s + support + u"Acme/writer.savedState"_s};
    QTest::newRow("vendor folder of an app called like its vendor")
        << QStringList{u"/Applications/Acme.app|com.acme.writer"_s, sheets} << acme
        << QStringList{u"[x] "_s + support + u"Acme | confidence=1"_s};
    QTest::newRow("vendor-named folder, four letters")
        << QStringList{writer, u"/Applications/Draw.app|com.abc.draw"_s}
        << QStringList{u"~/Library/Logs/Acme Tools/Writer/log"_s,
                       u"~/Library/Logs/Acme Tools/Other/log"_s}
        << QStringList{u"[x] ~/Library/Logs/Acme Tools/Writer"_s};
    QTest::newRow("vendor-named folder, three letters")
        << QStringList{u"/Applications/Draw.app|com.abc.draw"_s}
        << QStringList{u"~/Library/Logs/Abc Tools/Draw/log"_s} << QStringList{};
    QTest::newRow("Library, Shared, web site, versioned vendor")
        << QStringList{writer}
        << QStringList{u"~/Library/Writer/f"_s, u"~/Library/Acme15/f"_s, u"~/Library/Acme1x/f"_s,
                       u"/Users/Shared/Acme/f"_s, support + u"acme.com/f"_s}
        << QStringList{u"[x] "_s + support + u"acme.com"_s, u"[x] ~/Library/Acme15"_s,
                       u"[x] ~/Library/Writer"_s, u"[x] /Users/Shared/Acme"_s};
    QTest::newRow("a linked vendor folder where every user writes")
        << QStringList{writer, sheets}
        << QStringList{u"/opt/x/Writer/f"_s, u"/Users/Shared/Acme -> ../../opt/x"_s}
        << QStringList{};
    QTest::newRow("the app's entry in a vendor folder of Preferences")
        << QStringList{u"/Applications/Acme Draw.app|com.acme.d1"_s, sheets}
        << QStringList{u"~/Library/Preferences/Acme/Draw/f"_s,
                       u"~/Library/Preferences/Acme/Sheets/f"_s}
        << QStringList{u"[x] ~/Library/Preferences/Acme/Draw"_s};
    for (const auto &[app, folder] :
         {std::pair{u"ByHost"_s, u"~/Library/Preferences/ByHost/x.plist"_s},
          {u"DiagnosticReports"_s, u"~/Library/Logs/DiagnosticReports/x.ips"_s},
          {u"Address Book"_s, support + u"AddressBook/x"_s},
          {u"Caches"_s, u"~/Library/Caches/x"_s},
          {u"Profile"_s, u"~/.profile"_s}})
        QTest::addRow("app named %s", qPrintable(app))
            << QStringList{u"/Applications/%1.app|com.acme.x1"_s.arg(app)} << QStringList{folder}
            << QStringList{};
}

void tst_DiscoveryRules::sharedFolders_data()
{
    addColumns();
    QTest::newRow("one entry per app, one level down")
        << QStringList{writer}
        << QStringList{u"~/Library/Caches/com.plausiblelabs.crashreporter.data/com.acme.writer/f"_s,
                       u"~/Library/Caches/SentryCrash/Writer/f"_s,
                       u"~/Library/Caches/SentryCrash/Other/f"_s,
                       support + u"FileProvider/com.acme.writer.FileProvider/f"_s,
                       u"~/Library/Caches/com.apple.helpd/Generated/Writer Help 1.0/f"_s}
        << QStringList{
               u"[x] ~/Library/Caches/com.plausiblelabs.crashreporter.data/com.acme.writer"_s,
               u"[x] ~/Library/Caches/SentryCrash/Writer"_s,
               u"[x] "_s + support + u"FileProvider/com.acme.writer.FileProvider"_s,
               u"[x] ~/Library/Caches/com.apple.helpd/Generated/Writer Help 1.0"_s};
    const QString suite = u"ABCDE12345.com.acme.suite"_s;
    QTest::newRow("an app group shared with other apps")
        << QStringList{u"/Applications/Acme/Writer.app|com.acme.writer|"_s + suite +
                           u",group.com.acme.writer"_s,
                       u"/Applications/Acme/Acme Sheets.app|com.acme.sheets|"_s + suite,
                       u"/Applications/Acme Slides.app|com.acme.slides|"_s + suite}
        << QStringList{u"~/Library/Group Containers/"_s + suite + u"/x"_s,
                       u"~/Library/Group Containers/group.com.acme.writer/x"_s}
        << QStringList{u"[ ] ~/Library/Group Containers/"_s + suite +
                           u" | confidence=0.7; note=Shared with Acme Sheets and Acme Slides, "
                           u"left unselected"_s,
                       u"[x] ~/Library/Group Containers/group.com.acme.writer | note="_s};
    QTest::newRow("electron namespace takes no vendor files")
        << QStringList{u"/Applications/Notes.app|com.electron.notes"_s,
                       u"/Applications/Chat.app|com.electron.chat"_s}
        << QStringList{support + u"com.electron.chat/x"_s, support + u"com.electron.shared/x"_s,
                       u"~/Library/Preferences/com.electron.notes.plist"_s}
        << QStringList{u"[x] ~/Library/Preferences/com.electron.notes.plist"_s};
}

void tst_DiscoveryRules::linksAndHomeDotEntries_data()
{
    addColumns();
    const QString tool = u"/Applications/Writer.app/Contents/MacOS/Writer"_s;
    QTest::newRow("links into the bundle, absolute and relative")
        << QStringList{writer}
        << QStringList{u"/usr/local/bin/writer -> "_s + tool,
                       u"/opt/homebrew/bin/wr -> ../../.."_s + tool,
                       u"/usr/local/bin/twin -> /Applications/Writer.app.old/x"_s,
                       u"/usr/local/bin/other -> /Applications/Other.app/x"_s,
                       u"/usr/local/bin/writer-copy"_s}
        << QStringList{u"[x] /usr/local/bin/writer"_s, u"[x] /opt/homebrew/bin/wr"_s};
    QTest::newRow("continued names, and in .config")
        << QStringList{writer}
        << QStringList{u"~/.Writer_7F3A/f"_s,   u"~/.writer/f"_s,      u"~/.writer-cli/f"_s,
                       u"~/.writer_settings"_s, u"~/.writerly/f"_s,    u"~/writer/f"_s,
                       u"~/.config/writer/f"_s, u"~/.config/other/f"_s}
        << QStringList{u"[x] ~/.Writer_7F3A"_s, u"[x] ~/.writer"_s, u"[x] ~/.writer-cli"_s,
                       u"[x] ~/.writer_settings"_s, u"[x] ~/.config/writer"_s};
    QTest::newRow("tool folders shown, the home's own never")
        << QStringList{u"/Applications/Local.app|com.acme.local"_s}
        << QStringList{u"~/.local/f"_s, u"~/.Local/f"_s, u"~/.config/local/f"_s, u"~/.ssh/local"_s,
                       u"~/.cache/f"_s}
        << QStringList{u"[ ] ~/.Local"_s, u"[ ] ~/.local"_s, u"[x] ~/.config/local"_s};
    QTest::newRow("short name of four letters")
        << QStringList{u"/Applications/Quill Editor.app|com.acme.quill"_s}
        << QStringList{u"~/.quill/f"_s} << QStringList{u"[x] ~/.quill"_s};
    QTest::newRow("short name of three letters")
        << QStringList{u"/Applications/Ink Editor.app|com.acme.ink"_s} << QStringList{u"~/.ink/f"_s}
        << QStringList{};
}

void tst_DiscoveryRules::otherAppsKeepTheirs_data()
{
    addColumns();
    QTest::newRow("a group signed by an app of another namespace")
        << QStringList{u"/Applications/Cyber.app|ch.sudo.cyber|ABCDE12345.duck"_s,
                       u"/Applications/Mountain.app|io.mountain|ABCDE12345.duck"_s}
        << QStringList{u"~/Library/Preferences/ABCDE12345.duck.plist"_s}
        << QStringList{u"[ ] ~/Library/Preferences/ABCDE12345.duck.plist"_s};
    QTest::newRow("vendor files naming another installed app")
        << QStringList{u"/Applications/Acme Edge.app|com.acme.edgemac"_s,
                       u"/Applications/Acme Word.app|com.acme.word"_s}
        << QStringList{u"~/Library/Preferences/com.acme.Word7F3A.plist"_s,
                       u"~/Library/Preferences/com.acme.WordHelper.plist"_s,
                       u"~/Library/Preferences/com.acme.shared.plist"_s}
        << QStringList{u"[ ] ~/Library/Preferences/com.acme.shared.plist"_s};
    QTest::newRow("a namespace-wide identifier matches only whole")
        << QStringList{u"/Applications/Odd.app|com.apple"_s}
        << QStringList{u"~/Library/Preferences/com.apple.finder.plist"_s,
                       u"~/Library/Preferences/com.apple.plist"_s}
        << QStringList{u"[x] ~/Library/Preferences/com.apple.plist"_s};
    QTest::newRow("apps in a linked Applications folder, loop ended")
        << QStringList{writer, u"/opt/Suite/Sheets.app|com.acme.sheets"_s}
        << QStringList{u"/Applications/Suite -> ../opt/Suite"_s,
                       u"/opt/Suite/loop -> ../../Applications"_s,
                       u"~/Library/Preferences/com.acme.sheets.plist"_s}
        << QStringList{};
}

void tst_DiscoveryRules::launchJobs_data()
{
    addColumns();
    const QString agents = u"/Library/LaunchAgents/"_s;
    QTest::newRow("by name, even unreadable; by program; not when starting another app")
        << QStringList{writer, u"/Applications/Other.app|org.other.app"_s}
        << QStringList{u"~/Library/LaunchAgents/com.acme.writer.agent.plist => /usr/bin/true"_s,
                       u"~/Library/LaunchAgents/com.acme.writer.broken.plist"_s,
                       u"/Library/LaunchDaemons/org.toolkit.daemon.plist => "
                       u"/Applications/Writer.app/Contents/MacOS/Writer"_s,
                       agents + u"com.acme.writer.other.plist => "
                                u"/Applications/Other.app/Contents/MacOS/agent"_s,
                       agents + u"com.acme.writer.gone.plist => "
                                u"/Applications/Gone.app/Contents/MacOS/agent"_s,
                       agents + u"org.unrelated.plist => /usr/bin/true"_s}
        << QStringList{u"[x] ~/Library/LaunchAgents/com.acme.writer.agent.plist"_s,
                       u"[x] ~/Library/LaunchAgents/com.acme.writer.broken.plist"_s,
                       u"[x] "_s + agents + u"com.acme.writer.gone.plist"_s,
                       u"[x] /Library/LaunchDaemons/org.toolkit.daemon.plist"_s};
    const QString tool = u"/Library/PrivilegedHelperTools/tool"_s;
    QTest::newRow("helper named by a job the user can write")
        << QStringList{writer}
        << QStringList{tool, u"~/Library/LaunchAgents/com.acme.writer.agent.plist => "_s + tool}
        << QStringList{u"[x] ~/Library/LaunchAgents/com.acme.writer.agent.plist"_s,
                       u"[ ] "_s + tool};
    QTest::newRow("helper named by a system job")
        << QStringList{writer}
        << QStringList{tool + u" = 300"_s,
                       u"/Library/LaunchDaemons/com.acme.writer.d.plist => "_s + tool}
        << QStringList{
               u"[x] /Library/LaunchDaemons/com.acme.writer.d.plist | category=launchDaemons"_s,
               u"[x] "_s + tool + u" | category=helperTools; size=300"_s};
    QTest::newRow("a user job's helper that is the app's by name")
        << QStringList{writer}
        << QStringList{tool + u".x"_s, u"/Library/PrivilegedHelperTools/com.acme.writer.h"_s,
                       u"~/Library/LaunchAgents/com.acme.writer.a.plist => "
                       u"/Library/PrivilegedHelperTools/com.acme.writer.h"_s}
        << QStringList{u"[x] /Library/PrivilegedHelperTools/com.acme.writer.h"_s,
                       u"[x] ~/Library/LaunchAgents/com.acme.writer.a.plist"_s};
    QTest::newRow("a shared helper found twice keeps its first verdict")
        << QStringList{writer, u"/Applications/Acme Sheets.app|com.acme.sheets"_s}
        << QStringList{u"/Library/PrivilegedHelperTools/com.acme.helper"_s,
                       u"/Library/LaunchDaemons/com.acme.writer.helper.plist => "
                       u"/Library/PrivilegedHelperTools/com.acme.helper"_s}
        << QStringList{u"[ ] /Library/PrivilegedHelperTools/com.acme.helper"
                       u" | note=Shared with Acme Sheets, left unselected"_s,
                       u"[x] /Library/LaunchDaemons/com.acme.writer.helper.plist"_s};
    const QString login = u"/Applications/Writer.app/Contents/Library/LoginItems/"
                          u"Writer Helper.app/Contents/MacOS/h"_s;
    QTest::newRow("a job that starts a helper app nested in the bundle")
        << QStringList{writer}
        << QStringList{login, u"~/Library/LaunchAgents/com.acme.writer.login.plist => "_s + login}
        << QStringList{u"[x] ~/Library/LaunchAgents/com.acme.writer.login.plist"_s};
}

QTEST_GUILESS_MAIN(tst_DiscoveryRules)
#include "tst_DiscoveryRules.moc"
