// SPDX-License-Identifier: MIT
// Where things lie on a Mac, real or fake: the facts discovery writes into each item for the views.
#include "Platform/SystemLayout.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestSystemLayout : public QObject
{
    Q_OBJECT

private slots:
    void folders_data()
    {
        QTest::addColumn<QString>("macPath");
        QTest::addColumn<bool>("system");
        QTest::addColumn<bool>("adminOnly");
        QTest::newRow("system app") << u"/System/Applications/Chess.app"_s << true << false;
        QTest::newRow("SystemFoo") << u"/SystemFoo/Foo.app"_s << false << false;
        QTest::newRow("ordinary app") << u"/Applications/Foo.app"_s << false << false;
        QTest::newRow("launch daemon") << u"/Library/LaunchDaemons/a.plist"_s << false << true;
        QTest::newRow("prefix without slash")
            << u"/Library/Application Supportive/x"_s << false << true;
        QTest::newRow("user's own Library")
            << u"~/Library/LaunchAgents/a.plist"_s << false << false;
    }
    void folders()
    {
        QFETCH(QString, macPath);
        QFETCH(bool, system);
        QFETCH(bool, adminOnly);
        for (const QString &root : {u"/"_s, u"/Volumes/Fake Mac"_s}) {
            const SystemLayout layout(root, root + u"/Users/alice"_s);
            const QString real = layout.path(macPath);
            QCOMPARE(layout.isInSystemFolder(real), system);
            QCOMPARE(layout.isInAdminOnlyFolder(real), adminOnly);
        }
    }

    void displayPath_data()
    {
        QTest::addColumn<QString>("root");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("shown");
        const QString fake = u"/tmp/mac"_s;
        QTest::newRow("home as tilde")
            << u"/"_s << u"/Users/alice/Library/Caches/x"_s << u"~/Library/Caches/x"_s;
        QTest::newRow("another home with the same start")
            << u"/"_s << u"/Users/alice2/Library/x"_s << u"/Users/alice2/Library/x"_s;
        QTest::newRow("outside the home")
            << u"/"_s << u"/Library/Caches/x"_s << u"/Library/Caches/x"_s;
        QTest::newRow("fake Mac: its home") << fake << fake + u"/Users/alice/.x"_s << u"~/.x"_s;
        QTest::newRow("fake Mac: as the Mac names it")
            << fake << fake + u"/Library/Caches/x"_s << u"/Library/Caches/x"_s;
        QTest::newRow("beside the fake Mac") << fake << u"/tmp/mac2/x"_s << u"/tmp/mac2/x"_s;
    }
    void displayPath()
    {
        QFETCH(QString, root);
        QFETCH(QString, path);
        QFETCH(QString, shown);
        const SystemLayout layout(root, (root == u"/"_s ? QString() : root) + u"/Users/alice"_s);
        QCOMPARE(layout.displayPath(path), shown);
    }
};

QTEST_GUILESS_MAIN(TestSystemLayout)
#include "tst_SystemLayout.moc"
