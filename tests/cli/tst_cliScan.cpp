// SPDX-License-Identifier: MIT
// quenzo-cli scan, run as a user would, on a fake Mac.
#include "support/DiscoveryScene.h"
#include "support/FakeMacTools.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_cliScan : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void jsonListsItemsInDiscoveryOrder();
    void textGroupsByCategoryWithBadges();

private:
    struct Run
    {
        QByteArray out;
        QByteArray err;
        int exitCode = -1;
    };
    Run scan(const QStringList &extra);

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

tst_cliScan::Run tst_cliScan::scan(const QStringList &extra)
{
    QProcess cli;
    cli.start(QStringLiteral(QUENZO_CLI_PATH),
              QStringList{u"scan"_s, u"--root"_s, m_scene.mac().root(), u"--home"_s,
                          m_scene.mac().home()} +
                  extra + QStringList{m_scene.mac().path(u"/Applications/Writer.app"_s)});
    [&] { QVERIFY(cli.waitForFinished(60'000)); }();
    return {cli.readAllStandardOutput(), cli.readAllStandardError(), cli.exitCode()};
}

void tst_cliScan::jsonListsItemsInDiscoveryOrder()
{
    const Run run = scan({u"--json"_s});
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.err, QByteArray()); // progress only ever goes to a terminal
    const QJsonObject session =
        QJsonDocument::fromJson(run.out).object().value(u"sessions"_s).toArray().at(0).toObject();
    const QJsonArray items = session.value(u"items"_s).toArray();
    QStringList rows;
    for (const QJsonValue &value : items) {
        const QJsonObject item = value.toObject();
        rows.append(QStringList{item.value(u"displayPath"_s).toString().section(u'/', -1),
                                item.value(u"category"_s).toString(),
                                item.value(u"isSelected"_s).toBool() ? u"x"_s : u" "_s,
                                QString::number(item.value(u"confidence"_s).toDouble()),
                                item.value(u"note"_s).toString(),
                                item.value(u"packageID"_s).toString()}
                        .join(u'|'));
    }
    QCOMPARE(
        rows,
        (QStringList{
            u"Writer.app|application|x|1||"_s,
            u"ABCDE12345.com.acme.suite|containers| |0.7|Shared with Acme Sheets, left unselected|"_s,
            u"com.acme.common.plist|preferences| |0.7|Shared with Acme Sheets, left unselected|"_s,
            u"com.acme.writer.plist|preferences|x|1||"_s, u"com.acme.writer|caches|x|1||"_s,
            u"com.acme.writer.pkg.plist|receipts|x|1||com.acme.writer.pkg"_s}));
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
    const Run run = scan({});
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.err, QByteArray());
    const QString text = QString::fromUtf8(run.out);
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
    QVERIFY(text.contains(u"[x] ~/Library/Preferences/com.acme.writer.plist  2 KB\n"_s));
    QVERIFY(text.contains(u"4 of 6 selected"_s));
}

QTEST_GUILESS_MAIN(tst_cliScan)
#include "tst_cliScan.moc"
