// SPDX-License-Identifier: MIT
// Runs the real quenzo-cli uninstall against a fake Mac.
#include "fakemac/FakeMacRemovalTools.h"
#include "support/CliRun.h"
#include "support/TemporaryFakeMac.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTest>

#include <unistd.h>

using namespace Qt::StringLiterals;

class TestCliUninstall : public QObject
{
    Q_OBJECT

    std::unique_ptr<TemporaryFakeMac> m_mac;
    QString m_app;

    CliRun cli(const QStringList &options) const
    {
        return CliRun::on(u"uninstall"_s, m_mac->root(), m_mac->home(), options, m_app);
    }

private slots:
    void init()
    {
        m_mac = std::make_unique<TemporaryFakeMac>();
        QVERIFY(m_mac->isValid());
        FakeMacRemovalTools::install(*m_mac);
        FakeMac::App app;
        app.path = u"/Applications/Writer.app"_s;
        app.identifier = u"com.example.writer"_s;
        app.executable = u"Writer"_s;
        m_app = m_mac->addApp(app);
        m_mac->addTextFile(u"~/Library/Caches/com.example.writer/cache.db"_s, "cache");
    }

    // Run as an ordinary user (nobody) whose Trash is a link to a folder elsewhere: nothing moves
    // there, or anywhere.
    void linkedTrashRefusedForAnUnprivilegedUser()
    {
        if (::geteuid() != 0 || QStandardPaths::findExecutable(u"setpriv"_s).isEmpty())
            QSKIP("needs root and setpriv to act as nobody");
        QTemporaryDir elsewhere;
        const QString victim = elsewhere.filePath(u"victim"_s);
        QVERIFY(QDir().mkpath(victim));
        QVERIFY(QDir(m_mac->home() + u"/.Trash"_s).removeRecursively());
        QVERIFY(QFile::link(victim, m_mac->home() + u"/.Trash"_s));
        // The fake Mac readable by all, the home and the victim folder nobody's own.
        QProcess::execute(u"chmod"_s, {u"755"_s, m_mac->root(), elsewhere.path()});
        QProcess::execute(u"chown"_s, {u"-R"_s, u"nobody:nogroup"_s, m_mac->home(), victim});
        QProcess process;
        process.setStandardInputFile(QProcess::nullDevice());
        process.start(u"setpriv"_s, {u"--reuid=nobody"_s, u"--regid=nogroup"_s, u"--clear-groups"_s,
                                     QStringLiteral(QUENZO_CLI_PATH), u"uninstall"_s, u"--root"_s,
                                     m_mac->root(), u"--home"_s, m_mac->home(), u"--yes"_s, m_app});
        QVERIFY(process.waitForFinished(120'000));
        QCOMPARE(process.exitCode(), 1);
        QVERIFY(QDir(victim).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
        QVERIFY(QFileInfo::exists(m_app));
    }

    // A privileged move that does not happen (a folder on the way is a link) leaves the item,
    // shows in the log and the summary on stdout and makes the exit code 1.
    void failedItemExitsWithOne()
    {
        const QString data =
            m_mac->addTextFile(u"/Library/Application Support.real/Writer/data"_s, "data");
        QVERIFY(QDir(m_mac->path(u"/Library/Application Support"_s)).removeRecursively());
        m_mac->addSymlink(u"/Library/Application Support"_s, u"Application Support.real"_s);
        const CliRun run = cli({u"--yes"_s});
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.out.contains(u"! Writer: Failed to remove: "_s) &&
                     run.out.contains(u"\nWriter: 2 moved to the Trash ("_s) &&
                     run.out.contains(u"), 1 failed\n"_s),
                 qPrintable(run.out));
        QVERIFY(QFileInfo::exists(data) && !QFileInfo::exists(m_app));
    }
};

QTEST_GUILESS_MAIN(TestCliUninstall)
#include "tst_cliUninstall.moc"
