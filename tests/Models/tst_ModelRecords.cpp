// SPDX-License-Identifier: MIT
// The texts the records give the views: app names and category names.
#include "Models/AppInfo.h"
#include "Models/FileCategory.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestModelRecords : public QObject
{
    Q_OBJECT

private slots:
    void appDisplayNameRemovesEveryAppSuffix_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        QTest::newRow("bundle") << u"Foo.app"_s << u"Foo"_s;
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
