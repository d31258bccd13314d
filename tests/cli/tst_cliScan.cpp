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
        const auto joined = [](const QJsonValue &object, std::initializer_list<const char *> keys) {
            QStringList values;
            for (const char *key : keys)
                values.append(object[QLatin1String(key)].toVariant().toString());
            return values.join(u'|');
        };
        QCOMPARE(joined(session, {"name", "displayName", "bundleIdentifier", "version", "status",
                                  "isSystemProtected", "selectedFilesCount"}),
                 u"Writer.app|Writer|com.acme.writer|2.1|ready|false|4"_s);
        QStringList rows;
        for (const QJsonValue &item : session[u"items"_s].toArray())
            rows.append(joined(item, {"displayPath", "category", "isSelected", "confidence", "note",
                                      "packageID", "reason"}));
        const QString shared = u"Shared with Acme Sheets, left unselected"_s;
        QCOMPARE(
            rows,
            (QStringList{
                u"/Applications/Writer.app|application|true|1|||the app"_s,
                u"~/Library/Group Containers/ABCDE12345.com.acme.suite|containers|false|0.7|"_s +
                    shared + u"||app group abcde12345.com.acme.suite"_s,
                u"~/Library/Preferences/com.acme.common.plist|preferences|false|0.7|"_s + shared +
                    u"||vendor com.acme"_s,
                u"~/Library/Preferences/com.acme.writer.plist|preferences|true|1|||bundle "
                u"identifier com.acme.writer"_s,
                u"/Library/Caches/com.acme.writer|caches|true|1|||bundle identifier "
                u"com.acme.writer"_s,
                u"/private/var/db/receipts/com.acme.writer.pkg.plist|receipts|true|1||"
                u"com.acme.writer.pkg|bundle identifier com.acme.writer"_s}));
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
        QTest::addColumn<QString>("arguments"); // APP, ROOT and HOME stand for the fake Mac's
        QTest::addColumn<QString>("message");
        QTest::newRow("no command") << QString() << u"missing command"_s;
        QTest::newRow("unknown command") << u"remove APP"_s << u"unknown command: remove"_s;
        QTest::newRow("unknown option") << u"scan --fast APP"_s << u"unknown option: --fast"_s;
        QTest::newRow("--yes is for uninstall")
            << u"scan --yes APP"_s << u"unknown option: --yes"_s;
        QTest::newRow("root missing") << u"scan --root /nonexistent/q APP"_s << u"no such folder"_s;
        QTest::newRow("root not a folder")
            << u"scan --root /etc/hostname APP"_s << u"not a folder"_s;
        QTest::newRow("root without value") << u"scan --root"_s << u"--root needs a folder"_s;
        QTest::newRow("no app") << u"scan --json"_s << u"no app given"_s;
        QTest::newRow("uninstall without a terminal or --yes")
            << u"uninstall --root ROOT --home HOME APP"_s << u"--yes"_s;
    }
    void badArgumentsExitWithTwo()
    {
        QFETCH(QString, arguments);
        QFETCH(QString, message);
        const FakeMac &mac = m_scene.mac();
        const QString app = mac.path(u"/Applications/Writer.app"_s);
        QStringList words = arguments.split(u' ', Qt::SkipEmptyParts);
        for (QString &word : words)
            word.replace(u"APP"_s, app)
                .replace(u"ROOT"_s, mac.root())
                .replace(u"HOME"_s, mac.home());
        const CliRun run = CliRun::of(words);
        QCOMPARE(run.exitCode, 2);
        QVERIFY2(run.err.contains(message) && run.err.count(u'\n') == 1, qPrintable(run.err));
        // Only the refused uninstall has shown its plan.
        QVERIFY2(arguments.startsWith(u"uninstall"_s) ? run.out.contains(u"4 of 6 selected"_s)
                                                      : run.out.isEmpty(),
                 qPrintable(run.out));
        QVERIFY(QFileInfo::exists(app + u"/Contents"_s));
    }
};

QTEST_GUILESS_MAIN(tst_cliScan)
#include "tst_cliScan.moc"
