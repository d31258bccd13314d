// SPDX-License-Identifier: MIT
// quenzo-cli run as a user would, on a fake Mac: an app of a suite and a bundle that is not an
// app. Bad arguments end with one line on stderr and exit code 2, before anything is touched.
#include "fakemac/FakeMacTools.h"
#include "support/CliRun.h"
#include "support/DiscoveryScene.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_cliScan : public QObject
{
    Q_OBJECT

    DiscoveryScene m_scene;

    CliRun scan(const QStringList &options)
    {
        FakeMac &mac = m_scene.mac();
        return CliRun::of(QStringList{u"scan"_s, u"--root"_s, mac.root(), u"--home"_s, mac.home()} +
                          options +
                          QStringList{mac.path(u"/Applications/Writer.app"_s),
                                      mac.path(u"/Applications/Broken.app"_s)});
    }

private slots:
    void initTestCase()
    {
        FakeMac &mac = m_scene.mac();
        const QString group = u"ABCDE12345.com.acme.suite"_s;
        m_scene.addApp(u"/Applications/Writer.app"_s, u"com.acme.writer"_s, {group},
                       {{u"CFBundleShortVersionString"_s, u"2.1"_s}});
        m_scene.addApp(u"/Applications/Acme Sheets.app"_s, u"com.acme.sheets"_s, {group});
        mac.addFile(u"~/Library/Preferences/com.acme.writer.plist"_s, 1500);
        mac.addFile(u"~/Library/Preferences/com.acme.common.plist"_s, 10);
        mac.addFile(u"~/Library/Group Containers/"_s + group + u"/x"_s, 20);
        mac.addFile(u"/Library/Caches/com.acme.writer/y"_s, 30);
        FakeMacTools::addPackage(mac, {u"com.acme.writer.pkg"_s, {}, true, 100});
        mac.addTextFile(u"/Applications/Broken.app/Contents/Info.plist"_s, "<plist><dict><key>");
    }

    void jsonListsItemsInDiscoveryOrder()
    {
        const CliRun run = scan({u"--json"_s});
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.err, QString()); // progress only goes to a terminal, refusals to --verbose
        const QJsonObject json = run.json();
        QCOMPARE(json[u"notice"_s].toString(), u"Broken.app couldn't be read as an app."_s);
        QCOMPARE(json[u"sessions"_s].toArray().size(), 1);
        const QJsonObject session = json[u"sessions"_s][0].toObject();
        QStringList fields;
        for (const char *key : {"name", "displayName", "bundleIdentifier", "version", "status",
                                "isSystemProtected", "selectedFilesCount"})
            fields.append(session[QLatin1String(key)].toVariant().toString());
        QCOMPARE(fields.join(u'|'), u"Writer.app|Writer|com.acme.writer|2.1|ready|false|4"_s);
        QStringList rows;
        for (const QJsonValue &item : session[u"items"_s].toArray())
            rows.append(QStringList{
                item[u"displayPath"_s].toString(), item[u"category"_s].toString(),
                item[u"isSelected"_s].toBool() ? u"x"_s : u" "_s,
                QString::number(item[u"confidence"_s].toDouble()), item[u"note"_s].toString(),
                item[u"packageID"_s].toString(), item[u"reason"_s].toString()}
                            .join(u'|')
                            .section(u'/', -1));
        QCOMPARE(rows,
                 (QStringList{
                     u"Writer.app|application|x|1|||the app"_s,
                     u"ABCDE12345.com.acme.suite|containers| |0.7|Shared with Acme Sheets, "
                     u"left unselected||app group abcde12345.com.acme.suite"_s,
                     u"com.acme.common.plist|preferences| |0.7|Shared with Acme Sheets, "
                     u"left unselected||vendor com.acme"_s,
                     u"com.acme.writer.plist|preferences|x|1|||bundle identifier com.acme.writer"_s,
                     u"com.acme.writer|caches|x|1|||bundle identifier com.acme.writer"_s,
                     u"com.acme.writer.pkg.plist|receipts|x|1||com.acme.writer.pkg|bundle "
                     u"identifier com.acme.writer"_s}));
        QCOMPARE(session[u"items"_s][3][u"displayPath"_s].toString(),
                 u"~/Library/Preferences/com.acme.writer.plist"_s);
        const QString found = session[u"logs"_s][0][u"message"_s].toString();
        QVERIFY2(found.startsWith(u"Found 6 files ("_s), qPrintable(found));
    }

    void textGroupsByCategoryWithBadges()
    {
        const CliRun run = scan({u"--verbose"_s});
        QCOMPARE(run.exitCode, 0);
        QVERIFY2(run.err.contains(
                     u"quenzo.platform: property list refused: \""_s +
                     m_scene.mac().path(u"/Applications/Broken.app/Contents/Info.plist"_s) + u'"'),
                 qPrintable(run.err));
        qsizetype at = 0;
        for (const QString &header : {u"  Application (1 items)"_s, u"  Containers (1 items)"_s,
                                      u"  Preferences (2 items)"_s, u"  Caches (1 items)"_s,
                                      u"  Installer Receipts (1 items)"_s}) {
            const qsizetype next = run.out.indexOf(header, at);
            QVERIFY2(next > at, qPrintable(header + u" missing or out of order in\n"_s + run.out));
            at = next;
        }
        QVERIFY(run.out.contains(
            u"[ ] ~/Library/Preferences/com.acme.common.plist  10 bytes  • Shared with Acme Sheets, left unselected"_s));
        QVERIFY(run.out.contains(
            u"[x] ~/Library/Preferences/com.acme.writer.plist  2 KB  (bundle identifier com.acme.writer)\n"_s));
        QVERIFY(run.out.contains(u"4 of 6 selected"_s));
    }

    void badArgumentsExitWithTwo_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("message");
        const FakeMac &mac = m_scene.mac();
        const QString app = mac.path(u"/Applications/Writer.app"_s);
        const auto row = [](const char *name, const QStringList &arguments,
                            const QString &message) {
            QTest::newRow(name) << arguments << message;
        };
        row("no command", {}, u"missing command"_s);
        row("unknown command", {u"remove"_s, app}, u"unknown command: remove"_s);
        row("unknown option", {u"scan"_s, u"--fast"_s, app}, u"unknown option: --fast"_s);
        row("--yes is for uninstall", {u"scan"_s, u"--yes"_s, app}, u"unknown option: --yes"_s);
        row("root missing", {u"scan"_s, u"--root"_s, u"/nonexistent/quenzo"_s, app},
            u"no such folder"_s);
        row("root not a folder", {u"scan"_s, u"--root"_s, u"/etc/hostname"_s, app},
            u"not a folder"_s);
        row("root without value", {u"scan"_s, u"--root"_s}, u"--root needs a folder"_s);
        row("no app", {u"scan"_s, u"--json"_s}, u"no app given"_s);
        row("uninstall without a terminal or --yes",
            {u"uninstall"_s, u"--root"_s, mac.root(), u"--home"_s, mac.home(), app}, u"--yes"_s);
    }
    void badArgumentsExitWithTwo()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, message);
        const CliRun run = CliRun::of(arguments);
        QCOMPARE(run.exitCode, 2);
        QVERIFY2(run.err.contains(message), qPrintable(run.err));
        QCOMPARE(run.err.count(u'\n'), 1);
        QVERIFY(run.out.isEmpty());
        QVERIFY(QFileInfo::exists(m_scene.mac().path(u"/Applications/Writer.app/Contents"_s)));
    }
};

QTEST_GUILESS_MAIN(tst_cliScan)
#include "tst_cliScan.moc"
