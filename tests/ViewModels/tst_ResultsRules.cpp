// SPDX-License-Identifier: MIT
#include "ViewModels/ResultsRules.h"
#include "fakemac/FakeMac.h"

#include <QTemporaryDir>
#include <QtTest>

// The texts built from these rules are checked where the user reads them (tst_Window.qml).
class ResultsRulesTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    std::unique_ptr<FakeMac> m_mac;

    FileItem item(const QString &macPath, bool selected = true, bool create = true)
    {
        FileItem file;
        file.path = create ? m_mac->addFile(macPath, 10) : m_mac->path(macPath);
        file.isSelected = selected;
        return file;
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        m_mac = std::make_unique<FakeMac>(m_dir.path());
        m_mac->activate();
    }

    void hasProtectedFiles_data()
    {
        QTest::addColumn<QString>("macPath");
        QTest::addColumn<bool>("selected");
        QTest::addColumn<bool>("writable"); // as discovery found it
        QTest::addColumn<bool>("expected");
        QTest::newRow("launch daemon") << "/Library/LaunchDaemons/a.plist" << true << true << true;
        QTest::newRow("prefix without slash")
            << "/Library/Application Supportive/x" << true << true << true;
        QTest::newRow("not selected") << "/Library/LaunchDaemons/b.plist" << false << true << false;
        QTest::newRow("user cache") << "~/Library/Caches/a" << true << true << false;
        QTest::newRow("not writable when found")
            << "~/Library/Caches/gone" << true << false << true;
    }
    void hasProtectedFiles()
    {
        QFETCH(QString, macPath);
        QFETCH(bool, selected);
        QFETCH(bool, writable);
        QFETCH(bool, expected);
        FileItem probed = item(macPath, selected);
        probed.isWritable = writable;
        UninstallSession session(AppInfo{});
        session.setDiscoveredFiles({item(QStringLiteral("~/Library/Caches/ok"), true), probed});
        QCOMPARE(ResultsRules::hasProtectedFiles({&session}), expected);
    }

    void isSIPProtected_data()
    {
        QTest::addColumn<QString>("macPath");
        QTest::addColumn<bool>("flag");
        QTest::addColumn<bool>("expected");
        QTest::newRow("under /System/") << "/System/Applications/Chess.app" << false << true;
        QTest::newRow("flagged") << "/Applications/Link.app" << true << true;
        QTest::newRow("ordinary") << "/Applications/Foo.app" << false << false;
        QTest::newRow("SystemFoo") << "/SystemFoo/Foo.app" << false << false;
    }
    void isSIPProtected()
    {
        QFETCH(QString, macPath);
        QFETCH(bool, flag);
        QFETCH(bool, expected);
        AppInfo app;
        app.bundlePath = m_mac->path(macPath);
        app.isSystemProtected = flag;
        QCOMPARE(ResultsRules::isSIPProtected(UninstallSession(app)), expected);
    }
};

QTEST_GUILESS_MAIN(ResultsRulesTest)
#include "tst_ResultsRules.moc"
