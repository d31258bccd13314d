// SPDX-License-Identifier: MIT
// Runs the real quenzo-cli: bad arguments end with one line on stderr and exit code 2.
#include "support/FakeMac.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TestCliOptions : public QObject
{
    Q_OBJECT

private slots:
    void badArgumentsExitWithTwo_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("message");
        QTest::newRow("no command") << QStringList{} << u"missing command"_s;
        QTest::newRow("unknown command")
            << QStringList{u"remove"_s, u"A.app"_s} << u"unknown command: remove"_s;
        QTest::newRow("unknown option")
            << QStringList{u"scan"_s, u"--fast"_s, u"A.app"_s} << u"unknown option: --fast"_s;
        QTest::newRow("--yes is for uninstall")
            << QStringList{u"scan"_s, u"--yes"_s, u"A.app"_s} << u"unknown option: --yes"_s;
        QTest::newRow("root missing")
            << QStringList{u"scan"_s, u"--root"_s, u"/nonexistent/quenzo"_s, u"A.app"_s}
            << u"no such folder"_s;
        QTest::newRow("root not a folder")
            << QStringList{u"scan"_s, u"--root"_s, u"/etc/hostname"_s, u"A.app"_s}
            << u"not a folder"_s;
        QTest::newRow("root without value")
            << QStringList{u"scan"_s, u"--root"_s} << u"--root needs a folder"_s;
        QTest::newRow("no app") << QStringList{u"scan"_s, u"--json"_s} << u"no app given"_s;
    }
    void badArgumentsExitWithTwo()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, message);
        QProcess cli;
        cli.start(QStringLiteral(QUENZO_CLI_PATH), arguments);
        QVERIFY(cli.waitForFinished());
        QCOMPARE(cli.exitCode(), 2);
        const QString err = QString::fromUtf8(cli.readAllStandardError());
        QVERIFY2(err.contains(message), qPrintable(err));
        QCOMPARE(err.count(u'\n'), 1);
        QVERIFY(cli.readAllStandardOutput().isEmpty());
    }

    void scanPrintsRecordsAndTheNoticeAsJson()
    {
        QTemporaryDir dir;
        FakeMac mac(dir.path());
        FakeMac::App writer;
        writer.path = u"/Applications/Writer.app"_s;
        writer.identifier = u"com.acme.writer"_s;
        writer.version = u"2.1"_s;
        mac.addApp(writer);
        mac.addFolder(u"/Applications/Broken.app"_s);

        QProcess cli;
        cli.start(QStringLiteral(QUENZO_CLI_PATH), {u"scan"_s, u"--json"_s, u"--root"_s, mac.root(),
                                                    mac.path(u"/Applications/Writer.app"_s),
                                                    mac.path(u"/Applications/Broken.app"_s)});
        QVERIFY(cli.waitForFinished());
        QCOMPARE(cli.exitCode(), 0);
        const QJsonObject json = QJsonDocument::fromJson(cli.readAllStandardOutput()).object();
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
        QVERIFY(session.value(u"logs"_s)
                    .toArray()
                    .first()
                    .toObject()
                    .value(u"message"_s)
                    .toString()
                    .startsWith(u"Found "_s));
    }
};

QTEST_GUILESS_MAIN(TestCliOptions)
#include "tst_CliOptions.moc"
