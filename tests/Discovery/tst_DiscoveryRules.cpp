// SPDX-License-Identifier: MIT
#include "Discovery/FileDiscoveryService.h"
#include "support/DiscoveryScene.h"

#include <QFileInfo>
#include <QTest>

using namespace Qt::StringLiterals;

// Each table lays out a fake Mac and lists what discovery shows for the first app: "[x] path"
// for a selected item, "[ ] path" for one left to the user, the bundle left out.
//   apps:  "Mac path|identifier|group,group", the app to discover first
//   files: "path" a file, "path -> target" a link, "path => program" a launch job running it
class tst_DiscoveryRules : public QObject
{
    Q_OBJECT

private slots:
    void nameContinuations_data();
    void nameContinuations() { check(); }
    void ownFoldersOfVendorsAndApps_data();
    void ownFoldersOfVendorsAndApps() { check(); }
    void sharedPerAppFolders_data();
    void sharedPerAppFolders() { check(); }
    void commandLineLinks_data();
    void commandLineLinks() { check(); }
    void homeDotEntries_data();
    void homeDotEntries() { check(); }
    void otherAppsKeepTheirs_data();
    void otherAppsKeepTheirs() { check(); }
    void launchJobHelpers_data();
    void launchJobHelpers() { check(); }
    void reasons_data();
    void reasons();

private:
    static void addColumns();
    static void check();
};

namespace {
AppInfo layOut(DiscoveryScene &scene, const QStringList &apps, const QStringList &files)
{
    AppInfo first;
    for (const QString &spec : apps) {
        const QStringList parts = spec.split(u'|');
        const QStringList groups =
            parts.size() > 2 ? parts.at(2).split(u',', Qt::SkipEmptyParts) : QStringList();
        const AppInfo app = scene.addApp(parts.at(0), parts.at(1), groups);
        if (first.bundlePath.isEmpty())
            first = app;
    }
    for (const QString &spec : files) {
        if (const qsizetype arrow = spec.indexOf(u" -> "_s); arrow > 0)
            scene.mac().addSymlink(spec.left(arrow), spec.mid(arrow + 4));
        else if (const qsizetype job = spec.indexOf(u" => "_s); job > 0)
            scene.mac().addPlist(spec.left(job),
                                 QVariantMap{{u"Label"_s, QFileInfo(spec.left(job)).baseName()},
                                             {u"Program"_s, spec.mid(job + 4)}});
        else
            scene.mac().addFile(spec, 1);
    }
    return first;
}

QStringList rows(const DiscoveryScene &scene, const QList<FileItem> &items)
{
    QStringList result;
    for (const FileItem &item : items.mid(1))
        result.append((item.isSelected ? u"[x] "_s : u"[ ] "_s) + scene.macPathOf(item.path));
    return result;
}

const QString writer = u"/Applications/Writer.app|com.acme.writer"_s;
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
    QCOMPARE(rows(scene, FileDiscoveryService().discoverFiles(app)), shown);
}

void tst_DiscoveryRules::nameContinuations_data()
{
    addColumns();
    const QString support = u"~/Library/Application Support/"_s;
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
    QTest::newRow("Library, Shared, web site, versioned vendor")
        << QStringList{writer}
        << QStringList{u"~/Library/Writer/f"_s, u"~/Library/Acme15/f"_s, u"~/Library/Acme1x/f"_s,
                       u"/Users/Shared/Acme/f"_s, u"~/Library/Application Support/acme.com/f"_s}
        << QStringList{u"[x] ~/Library/Application Support/acme.com"_s, u"[x] ~/Library/Acme15"_s,
                       u"[x] ~/Library/Writer"_s, u"[x] /Users/Shared/Acme"_s};
    QTest::newRow("a linked vendor folder where every user writes")
        << QStringList{writer, u"/Applications/Sheets.app|com.acme.sheets"_s}
        << QStringList{u"/opt/x/Writer/f"_s, u"/Users/Shared/Acme -> ../../opt/x"_s}
        << QStringList{};
    QTest::newRow("the app's entry in a vendor folder of Preferences")
        << QStringList{u"/Applications/Acme Draw.app|com.acme.d1"_s,
                       u"/Applications/Acme Sheets.app|com.acme.sheets"_s}
        << QStringList{u"~/Library/Preferences/Acme/Draw/f"_s,
                       u"~/Library/Preferences/Acme/Sheets/f"_s}
        << QStringList{u"[x] ~/Library/Preferences/Acme/Draw"_s};
    for (const auto &[app, folder] :
         {std::pair{u"ByHost"_s, u"~/Library/Preferences/ByHost/x.plist"_s},
          {u"DiagnosticReports"_s, u"~/Library/Logs/DiagnosticReports/x.ips"_s},
          {u"Address Book"_s, u"~/Library/Application Support/AddressBook/x"_s},
          {u"Caches"_s, u"~/Library/Caches/x"_s},
          {u"Profile"_s, u"~/.profile"_s}})
        QTest::addRow("app named %s", qPrintable(app))
            << QStringList{u"/Applications/%1.app|com.acme.x1"_s.arg(app)} << QStringList{folder}
            << QStringList{};
}

void tst_DiscoveryRules::sharedPerAppFolders_data()
{
    addColumns();
    QTest::newRow("one entry per app, one level down")
        << QStringList{writer}
        << QStringList{u"~/Library/Caches/com.plausiblelabs.crashreporter.data/com.acme.writer/f"_s,
                       u"~/Library/Caches/SentryCrash/Writer/f"_s,
                       u"~/Library/Caches/SentryCrash/Other/f"_s,
                       u"~/Library/Application Support/FileProvider/com.acme.writer.FileProvider/f"_s,
                       u"~/Library/Caches/com.apple.helpd/Generated/Writer Help 1.0/f"_s}
        << QStringList{
               u"[x] ~/Library/Caches/com.plausiblelabs.crashreporter.data/com.acme.writer"_s,
               u"[x] ~/Library/Caches/SentryCrash/Writer"_s,
               u"[x] ~/Library/Application Support/FileProvider/com.acme.writer.FileProvider"_s,
               u"[x] ~/Library/Caches/com.apple.helpd/Generated/Writer Help 1.0"_s};
}

void tst_DiscoveryRules::commandLineLinks_data()
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
}

void tst_DiscoveryRules::homeDotEntries_data()
{
    addColumns();
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

void tst_DiscoveryRules::launchJobHelpers_data()
{
    addColumns();
    const QString tool = u"/Library/PrivilegedHelperTools/tool"_s;
    QTest::newRow("named by a job the user can write")
        << QStringList{writer}
        << QStringList{tool, u"~/Library/LaunchAgents/com.acme.writer.agent.plist => "_s + tool}
        << QStringList{u"[x] ~/Library/LaunchAgents/com.acme.writer.agent.plist"_s,
                       u"[ ] "_s + tool};
    QTest::newRow("named by a system job")
        << QStringList{writer}
        << QStringList{tool, u"/Library/LaunchDaemons/com.acme.writer.d.plist => "_s + tool}
        << QStringList{u"[x] /Library/LaunchDaemons/com.acme.writer.d.plist"_s, u"[x] "_s + tool};
    QTest::newRow("a user job's helper that is the app's by name")
        << QStringList{writer}
        << QStringList{tool + u".x"_s, u"/Library/PrivilegedHelperTools/com.acme.writer.h"_s,
                       u"~/Library/LaunchAgents/com.acme.writer.a.plist => "
                       u"/Library/PrivilegedHelperTools/com.acme.writer.h"_s}
        << QStringList{u"[x] /Library/PrivilegedHelperTools/com.acme.writer.h"_s,
                       u"[x] ~/Library/LaunchAgents/com.acme.writer.a.plist"_s};
    const QString login = u"/Applications/Writer.app/Contents/Library/LoginItems/"
                          u"Writer Helper.app/Contents/MacOS/h"_s;
    QTest::newRow("a job that starts a helper app nested in the bundle")
        << QStringList{writer}
        << QStringList{login, u"~/Library/LaunchAgents/com.acme.writer.login.plist => "_s + login}
        << QStringList{u"[x] ~/Library/LaunchAgents/com.acme.writer.login.plist"_s};
}

void tst_DiscoveryRules::reasons_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("reason");
    QTest::newRow("identifier") << u"~/Library/Preferences/com.acme.writer.plist"_s
                                << u"bundle identifier com.acme.writer"_s;
    QTest::newRow("group") << u"~/Library/Group Containers/ABCDE12345.com.acme.shared"_s
                           << u"app group abcde12345.com.acme.shared"_s;
    QTest::newRow("name") << u"~/Library/Application Support/Writer"_s << u"name Writer"_s;
    QTest::newRow("vendor folder")
        << u"~/Library/Application Support/Acme"_s << u"vendor folder Acme"_s;
    QTest::newRow("vendor prefix") << u"~/Library/Caches/com.acme.common"_s << u"vendor com.acme"_s;
    QTest::newRow("link") << u"/usr/local/bin/w"_s << u"link into the app"_s;
}

void tst_DiscoveryRules::reasons()
{
    QFETCH(QString, file);
    QFETCH(QString, reason);
    DiscoveryScene scene;
    const AppInfo app = scene.addApp(u"/Applications/Writer.app"_s, u"com.acme.writer"_s,
                                     {u"ABCDE12345.com.acme.shared"_s});
    if (file.contains(u"/bin/"_s))
        scene.mac().addSymlink(file, u"/Applications/Writer.app/Contents/MacOS/Writer"_s);
    else
        scene.mac().addFile(file + u"/f"_s, 1);
    const QList<FileItem> items = FileDiscoveryService().discoverFiles(app);
    const FileItem *item = scene.find(items, file);
    QVERIFY2(item, qPrintable(file));
    QCOMPARE(item->reason, reason);
}

QTEST_GUILESS_MAIN(tst_DiscoveryRules)
#include "tst_DiscoveryRules.moc"
