// SPDX-License-Identifier: MIT
// Runs the real quenzo-cli: bad arguments end with one line on stderr and exit code 2.
#include "support/CliRun.h"

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
        const CliRun run = CliRun::of(arguments);
        QCOMPARE(run.exitCode, 2);
        QVERIFY2(run.err.contains(message), qPrintable(run.err));
        QCOMPARE(run.err.count(u'\n'), 1);
        QVERIFY(run.out.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestCliOptions)
#include "tst_CliOptions.moc"
