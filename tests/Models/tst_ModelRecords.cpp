// SPDX-License-Identifier: MIT
// The texts the records give the views: app names, item paths and category names.
#include "Models/AppInfo.h"
#include "Models/FileItem.h"
#include "Platform/SystemLayout.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestModelRecords : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { SystemLayout::reset(); }

    void appDisplayNameRemovesEveryAppSuffix_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        QTest::newRow("bundle") << u"Foo.app"_s << u"Foo"_s;
        QTest::newRow("plain") << u"Foo"_s << u"Foo"_s;
        QTest::newRow("inner too") << u"Foo.app Helper.app"_s << u"Foo Helper"_s;
        QTest::newRow("case-sensitive") << u"Foo.APP"_s << u"Foo.APP"_s;
    }
    void appDisplayNameRemovesEveryAppSuffix()
    {
        QFETCH(QString, name);
        QFETCH(QString, expected);
        AppInfo app;
        app.name = name;
        QCOMPARE(app.displayName(), expected);
    }

    void itemDisplayPath_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("shown");
        QTest::newRow("home as tilde")
            << u"/Users/alice/Library/Caches/x"_s << u"~/Library/Caches/x"_s;
        QTest::newRow("another home with the same start")
            << u"/Users/alice2/Library/x"_s << u"/Users/alice2/Library/x"_s;
        QTest::newRow("outside the home") << u"/Library/Caches/x"_s << u"/Library/Caches/x"_s;
    }
    void itemDisplayPath()
    {
        QFETCH(QString, path);
        QFETCH(QString, shown);
        SystemLayout::set(u"/"_s, u"/Users/alice"_s);
        FileItem item;
        item.path = path;
        QCOMPARE(item.displayPath(), shown);
    }

    void categoryFromDisplayNameOnlyTakesDisplayNames()
    {
        QCOMPARE(fileCategoryFromDisplayName(u"webData"_s), std::nullopt);
        QCOMPARE(fileCategoryFromDisplayName(u"web data & cookies"_s), std::nullopt);
        for (const FileCategory category : allFileCategories())
            QCOMPARE(fileCategoryFromDisplayName(displayName(category)), category);
    }
};

QTEST_GUILESS_MAIN(TestModelRecords)
#include "tst_ModelRecords.moc"
