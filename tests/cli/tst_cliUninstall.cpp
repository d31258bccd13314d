// SPDX-License-Identifier: MIT
// Runs the real quenzo-cli uninstall against a fake Mac.
#include "support/FakeMac.h"
#include "support/FakeMacRemovalTools.h"
#include "support/FakeMacTools.h"
#include "support/TreeFingerprint.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
struct Run
{
    int exitCode = -1;
    QString out;
    QString err;
};
} // namespace

class TestCliUninstall : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<FakeMac> m_mac;
    QString m_app;
    QString m_cache;

    Run cli(const QStringList &options)
    {
        QProcess process;
        process.setStandardInputFile(QProcess::nullDevice()); // no terminal to ask on
        process.start(
            QStringLiteral(QUENZO_CLI_PATH),
            QStringList{u"uninstall"_s, u"--root"_s, m_mac->root(), u"--home"_s, m_mac->home()} +
                options + QStringList{m_app});
        if (!process.waitForFinished(120'000))
            return {};
        return Run{process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                   QString::fromUtf8(process.readAllStandardError())};
    }

    QString trash(const QString &name) const { return m_mac->home() + u"/.Trash/"_s + name; }

private slots:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
        m_mac = std::make_unique<FakeMac>(m_dir->path());
        FakeMacTools::installPkgutil(*m_mac);
        FakeMacTools::installMdfind(*m_mac);
        FakeMacRemovalTools::install(*m_mac);
        FakeMac::App app;
        app.path = u"/Applications/Writer.app"_s;
        app.identifier = u"com.example.writer"_s;
        app.executable = u"Writer"_s;
        m_app = m_mac->addApp(app);
        m_cache = m_mac->path(u"~/Library/Caches/com.example.writer"_s);
        m_mac->addTextFile(u"~/Library/Caches/com.example.writer/cache.db"_s, "cache");
    }

    void refusesWithoutTerminalOrYes()
    {
        const Run run = cli({});
        QCOMPARE(run.exitCode, 2);
        QVERIFY2(run.err.contains(u"--yes"_s), qPrintable(run.err));
        QVERIFY(QFileInfo::exists(m_app));
        QVERIFY(QFileInfo::exists(m_cache));
    }

    void movesAndStreamsTheLog()
    {
        const QByteArray bundle = TreeFingerprint::of(m_app);
        const Run run = cli({u"--yes"_s});
        QCOMPARE(run.exitCode, 0);
        QVERIFY2(run.out.contains(u"Writer: Starting uninstall process for Writer\n"_s),
                 qPrintable(run.out));
        QVERIFY(
            run.out.contains(u"Writer: Moved to trash: ~/Library/Caches/com.example.writer\n"_s));
        QVERIFY(run.out.contains(u"Writer: ✓ Uninstall completed successfully. "_s));
        QVERIFY(run.out.contains(u"Writer: 2 moved to the Trash"_s));
        QVERIFY(!QFileInfo::exists(m_app));
        QCOMPARE(TreeFingerprint::of(trash(u"Writer.app"_s)), bundle);
        QVERIFY(QFileInfo::exists(trash(u"com.example.writer/cache.db"_s)));
    }

    void jsonCarriesCountersAndLog()
    {
        const Run run = cli({u"--yes"_s, u"--json"_s});
        QCOMPARE(run.exitCode, 0);
        const QJsonObject session = QJsonDocument::fromJson(run.out.toUtf8())
                                        .object()
                                        .value(u"sessions"_s)
                                        .toArray()
                                        .first()
                                        .toObject();
        QCOMPARE(session.value(u"status"_s).toString(), u"completed"_s);
        QCOMPARE(session.value(u"removedCount"_s).toInt(), 2);
        QCOMPARE(session.value(u"failedCount"_s).toInt(), 0);
        QVERIFY(session.value(u"removedBytes"_s).toInteger() > 0);
        const QJsonArray logs = session.value(u"logs"_s).toArray();
        QCOMPARE(logs.last().toObject().value(u"message"_s).toString(),
                 u"✓ Uninstall completed successfully. 2 items moved to the Trash."_s);
        QVERIFY(run.err.contains(u"Writer: Moved to trash: "_s)); // the stream stays off stdout
    }

    // A privileged move that does not happen leaves the item and makes the exit code 1.
    void failedItemExitsWithOne()
    {
        m_mac->addTextFile(u"/Library/Application Support/Writer/data"_s, "data");
        m_mac->addTool(u"/bin/mv"_s, "exit 1\n");
        const Run run = cli({u"--yes"_s});
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.out.contains(u"! Writer: Failed to remove: "_s), qPrintable(run.out));
        QVERIFY(QFileInfo::exists(m_mac->path(u"/Library/Application Support/Writer/data"_s)));
        QVERIFY(!QFileInfo::exists(m_app));
    }
};

QTEST_GUILESS_MAIN(TestCliUninstall)
#include "tst_cliUninstall.moc"
