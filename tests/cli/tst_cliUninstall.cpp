// SPDX-License-Identifier: MIT
// Runs the real quenzo-cli uninstall against a fake Mac.
#include "fakemac/FakeMacRemovalTools.h"
#include "support/CliRun.h"
#include "support/TemporaryFakeMac.h"

#include <QTest>

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
