// SPDX-License-Identifier: MIT
// quenzo-cli scan, run as a user would, on a fake Mac.
#include "fakemac/FakeMacTools.h"
#include "support/CliRun.h"
#include "support/DiscoveryScene.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_cliScan : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void jsonListsItemsInDiscoveryOrder();
    void textGroupsByCategoryWithBadges();
    void unreadableAppBecomesTheNotice();
    void verboseSaysWhyAFileWasRefused_data();
    void verboseSaysWhyAFileWasRefused();

private:
    [[nodiscard]] CliRun scan(const QStringList &options);

    DiscoveryScene m_scene;
};

void tst_cliScan::initTestCase()
{
    FakeMac &mac = m_scene.mac();
    const QString group = u"ABCDE12345.com.acme.suite"_s;
    m_scene.addApp(u"/Applications/Writer.app"_s, u"com.acme.writer"_s, {group});
    m_scene.addApp(u"/Applications/Acme Sheets.app"_s, u"com.acme.sheets"_s, {group});
    mac.addFile(u"~/Library/Preferences/com.acme.writer.plist"_s, 1500);
    mac.addFile(u"~/Library/Preferences/com.acme.common.plist"_s, 10);
    mac.addFile(u"~/Library/Group Containers/"_s + group + u"/x"_s, 20);
    mac.addFile(u"/Library/Caches/com.acme.writer/y"_s, 30);
    FakeMacTools::addPackage(mac, {u"com.acme.writer.pkg"_s, {}, true, 100});
}

CliRun tst_cliScan::scan(const QStringList &options)
{
    return CliRun::on(u"scan"_s, m_scene.mac().root(), m_scene.mac().home(), options,
                      m_scene.mac().path(u"/Applications/Writer.app"_s));
}

void tst_cliScan::jsonListsItemsInDiscoveryOrder()
{
    const CliRun run = scan({u"--json"_s});
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.err, QString()); // progress only ever goes to a terminal
    const QJsonObject session = run.json().value(u"sessions"_s).toArray().at(0).toObject();
    const QJsonArray items = session.value(u"items"_s).toArray();
    QStringList rows;
    for (const QJsonValue &value : items) {
        const QJsonObject item = value.toObject();
        rows.append(QStringList{item.value(u"displayPath"_s).toString().section(u'/', -1),
                                item.value(u"category"_s).toString(),
                                item.value(u"isSelected"_s).toBool() ? u"x"_s : u" "_s,
                                QString::number(item.value(u"confidence"_s).toDouble()),
                                item.value(u"note"_s).toString(),
                                item.value(u"packageID"_s).toString(),
                                item.value(u"reason"_s).toString()}
                        .join(u'|'));
    }
    QCOMPARE(rows,
             (QStringList{
                 u"Writer.app|application|x|1|||the app"_s,
                 u"ABCDE12345.com.acme.suite|containers| |0.7|Shared with Acme Sheets, left "
                 u"unselected||app group abcde12345.com.acme.suite"_s,
                 u"com.acme.common.plist|preferences| |0.7|Shared with Acme Sheets, left "
                 u"unselected||vendor com.acme"_s,
                 u"com.acme.writer.plist|preferences|x|1|||bundle identifier com.acme.writer"_s,
                 u"com.acme.writer|caches|x|1|||bundle identifier com.acme.writer"_s,
                 u"com.acme.writer.pkg.plist|receipts|x|1||com.acme.writer.pkg|bundle identifier "
                 u"com.acme.writer"_s}));
    QCOMPARE(items.at(3).toObject().value(u"displayPath"_s).toString(),
             u"~/Library/Preferences/com.acme.writer.plist"_s);
    QCOMPARE(items.at(3).toObject().value(u"formattedSize"_s).toString(), u"2 KB"_s);
    QCOMPARE(session.value(u"selectedFilesCount"_s).toInt(), 4);
    const QString found =
        session.value(u"logs"_s).toArray().at(0).toObject().value(u"message"_s).toString();
    QVERIFY2(found.startsWith(u"Found 6 files ("_s), qPrintable(found));
}

void tst_cliScan::textGroupsByCategoryWithBadges()
{
    const CliRun run = scan({});
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.err, QString());
    const QString &text = run.out;
    const QStringList headers{u"  Application (1 items)"_s, u"  Containers (1 items)"_s,
                              u"  Preferences (2 items)"_s, u"  Caches (1 items)"_s,
                              u"  Installer Receipts (1 items)"_s};
    qsizetype at = 0;
    for (const QString &header : headers) {
        const qsizetype next = text.indexOf(header, at);
        QVERIFY2(next > at, qPrintable(header + u" missing or out of order in\n"_s + text));
        at = next;
    }
    QVERIFY(text.contains(
        u"[ ] ~/Library/Preferences/com.acme.common.plist  10 bytes  • Shared with Acme Sheets, left unselected"_s));
    QVERIFY(text.contains(
        u"[x] ~/Library/Preferences/com.acme.writer.plist  2 KB  (bundle identifier com.acme.writer)\n"_s));
    QVERIFY(text.contains(u"4 of 6 selected"_s));
}

void tst_cliScan::unreadableAppBecomesTheNotice()
{
    QTemporaryDir dir;
    FakeMac mac(dir.path());
    FakeMac::App writer;
    writer.path = u"/Applications/Writer.app"_s;
    writer.identifier = u"com.acme.writer"_s;
    writer.version = u"2.1"_s;
    mac.addApp(writer);
    mac.addFolder(u"/Applications/Broken.app"_s);

    const CliRun run = CliRun::of({u"scan"_s, u"--json"_s, u"--root"_s, mac.root(),
                                   mac.path(u"/Applications/Writer.app"_s),
                                   mac.path(u"/Applications/Broken.app"_s)});
    QCOMPARE(run.exitCode, 0);
    const QJsonObject json = run.json();
    QCOMPARE(json.value(u"notice"_s).toString(), u"Broken.app couldn't be read as an app."_s);
    const QJsonArray sessions = json.value(u"sessions"_s).toArray();
    QCOMPARE(sessions.size(), 1);
    const QJsonObject session = sessions.first().toObject();
    QCOMPARE(session.value(u"name"_s).toString(), u"Writer.app"_s);
    QCOMPARE(session.value(u"displayName"_s).toString(), u"Writer"_s);
    QCOMPARE(session.value(u"bundleIdentifier"_s).toString(), u"com.acme.writer"_s);
    QCOMPARE(session.value(u"version"_s).toString(), u"2.1"_s);
    QCOMPARE(session.value(u"status"_s).toString(), u"ready"_s);
    QCOMPARE(session.value(u"isSystemProtected"_s).toBool(), false);
}

void tst_cliScan::verboseSaysWhyAFileWasRefused_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("expectedOnStderr"); // %1: the refused file; empty: nothing at all
    QTest::newRow("quiet by default") << QStringList{} << QString();
    QTest::newRow("--verbose") << QStringList{u"--verbose"_s}
                               << u"quenzo.platform: property list refused: \"%1\""_s;
}

void tst_cliScan::verboseSaysWhyAFileWasRefused()
{
    QFETCH(QStringList, options);
    QFETCH(QString, expectedOnStderr);
    QTemporaryDir dir;
    FakeMac mac(dir.path());
    const QString info = u"/Applications/Broken.app/Contents/Info.plist"_s;
    mac.addTextFile(info, "<plist><dict><key>unclosed");

    const CliRun run = CliRun::of(QStringList{u"scan"_s, u"--root"_s, mac.root()} + options +
                                  QStringList{mac.path(u"/Applications/Broken.app"_s)});
    if (expectedOnStderr.isEmpty())
        QCOMPARE(run.err, QString());
    else
        QVERIFY2(run.err.contains(expectedOnStderr.arg(mac.path(info))), qPrintable(run.err));
}

QTEST_GUILESS_MAIN(tst_cliScan)
#include "tst_cliScan.moc"
