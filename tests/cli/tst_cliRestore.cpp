// SPDX-License-Identifier: MIT
// Uninstall with the real quenzo-cli on a fake Mac, then put it back from the record.
#include "fakemac/FakeMacRemovalTools.h"
#include "fakemac/TreeFingerprint.h"
#include "support/CliRun.h"
#include "support/TemporaryFakeMac.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;

class TestCliRestore : public QObject
{
    Q_OBJECT

    std::unique_ptr<TemporaryFakeMac> m_mac;
    QStringList m_apps;
    QMap<QString, QByteArray> m_before; // real path -> what it held

    QStringList arguments(const QString &command, const QStringList &options) const
    {
        return QStringList{command, u"--root"_s, m_mac->root(), u"--home"_s, m_mac->home()} +
               options;
    }
    CliRun cli(const QString &command, const QStringList &options) const
    {
        return CliRun::of(arguments(command, options));
    }
    void verifyAllBack() const
    {
        for (auto it = m_before.cbegin(); it != m_before.cend(); ++it)
            QVERIFY2(TreeFingerprint::of(it.key()) == it.value(), qPrintable(it.key()));
    }

private slots:
    void init()
    {
        m_mac = std::make_unique<TemporaryFakeMac>();
        QVERIFY(m_mac->isValid());
        FakeMacRemovalTools::install(*m_mac);
        m_apps.clear();
        for (const QString &name : {u"Writer"_s, u"Painter"_s}) {
            const QString id = u"com.example."_s + name.toLower();
            FakeMac::App app;
            app.path = u"/Applications/"_s + name + u".app"_s;
            app.identifier = id;
            app.executable = name;
            m_apps.append(m_mac->addApp(app));
            m_mac->addTextFile(u"~/Library/Caches/"_s + id + u"/cache.db"_s, name.toUtf8());
            m_mac->addTextFile(u"/Library/Application Support/"_s + name + u"/data"_s, "admin");
            m_mac->addTextFile(u"~/Library/Preferences/"_s + id + u".plist"_s, "prefs");
        }
        m_before.clear();
        for (const QString &entry : TreeFingerprint::entries(m_mac->root())) {
            const QString path = m_mac->root() + u'/' + entry;
            if (!entry.startsWith(u".fakemac"_s) && !entry.contains(u"/.Trash"_s) &&
                !QFileInfo(path).isDir())
                m_before.insert(path, TreeFingerprint::of(path));
        }
    }

    // Then what stands at an item's place now is kept, and the item left in the Trash until the
    // place is free; each item goes back once, as it was.
    void putsBackWhatItMay()
    {
        const CliRun uninstall = cli(u"uninstall"_s, QStringList{u"--yes"_s, u"--json"_s} + m_apps);
        QCOMPARE(uninstall.exitCode, 0);
        // The JSON report on stdout, the log streamed on stderr.
        const QJsonObject session = uninstall.json()[u"sessions"_s][0].toObject();
        QCOMPARE(session[u"status"_s].toString(), u"completed"_s);
        QCOMPARE(session[u"removedCount"_s].toInt(), 4);
        QCOMPARE(session[u"failedCount"_s].toInt(), 0);
        QVERIFY(session[u"removedBytes"_s].toInteger() > 0);
        QCOMPARE(session[u"logs"_s].toArray().last()[u"message"_s].toString(),
                 u"✓ Uninstall completed successfully. 4 items moved to the Trash."_s);
        QVERIFY2(uninstall.err.contains(u"Writer: Starting uninstall process for Writer\n"_s) &&
                     uninstall.err.contains(
                         u"Writer: Moved to trash: ~/Library/Caches/com.example.writer\n"_s),
                 qPrintable(uninstall.err));
        const QJsonArray records = cli(u"history"_s, {u"--json"_s}).json()[u"records"_s].toArray();
        QCOMPARE(records.size(), 1);
        QCOMPARE(records.first()[u"movedCount"_s].toInt(), 8);
        const QString prefs = u"~/Library/Preferences/com.example.writer.plist"_s;
        const QString taken = m_mac->addTextFile(prefs, "new");
        const QByteArray fresh = TreeFingerprint::of(taken);
        const CliRun restore = cli(u"restore"_s, {u"--last"_s});
        QCOMPARE(restore.exitCode, 1);
        QVERIFY2(restore.out.contains(u"something else is at its place now: "_s + prefs) &&
                     restore.out.contains(u"7 items put back. 1 left in the Trash"_s),
                 qPrintable(restore.out));
        QCOMPARE(TreeFingerprint::of(taken), fresh);
        QVERIFY(QFileInfo::exists(m_mac->trash(u"com.example.writer.plist"_s)) &&
                QFile::remove(taken));
        for (const int count : {1, 0}) {
            const CliRun again = cli(u"restore"_s, {u"--last"_s, u"--json"_s});
            QCOMPARE(again.exitCode, 0);
            QCOMPARE(again.json()[u"restoredCount"_s].toInt(), count);
        }
        verifyAllBack();
    }

    // Killed while the privileged helper stalls: what the user-level moves took goes back.
    void putsBackAnInterruptedRun()
    {
        const QString pidFile = m_mac->root() + u"/stalled.pid"_s;
        // The helper stops the app's daemon before its first move: that is where it stalls.
        m_mac->addPlist(u"/Library/LaunchDaemons/com.example.writer.daemon.plist"_s,
                        QVariantMap{{u"Label"_s, u"com.example.writer.daemon"_s}});
        m_mac->addTool(u"/bin/launchctl"_s,
                       "echo $PPID $$ > '" + pidFile.toUtf8() + "'\nexec sleep 120\n");
        QProcess uninstall;
        uninstall.start(QStringLiteral(QUENZO_CLI_PATH),
                        arguments(u"uninstall"_s, QStringList{u"--yes"_s} + m_apps));
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(pidFile).size() > 0, 60'000);
        QVERIFY(!QFileInfo::exists(m_apps.first())); // the user-level half has moved
        uninstall.kill();
        QVERIFY(uninstall.waitForFinished());
        QFile pid(pidFile);
        QVERIFY(pid.open(QIODevice::ReadOnly));
        // The helper and the stalled tool die with the run, as they would at a power cut.
        for (const QByteArray &process : pid.readAll().trimmed().split(' '))
            ::kill(process.toInt(), SIGKILL);
        FakeMacRemovalTools::install(*m_mac);

        const CliRun restore = cli(u"restore"_s, {u"--last"_s, u"--json"_s});
        QCOMPARE(restore.exitCode, 0);
        QCOMPARE(restore.json()[u"restoredCount"_s].toInt(), 6);
        verifyAllBack();
    }
};

QTEST_GUILESS_MAIN(TestCliRestore)
#include "tst_cliRestore.moc"
