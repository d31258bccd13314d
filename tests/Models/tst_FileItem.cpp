// SPDX-License-Identifier: MIT
#include "Models/FileItem.h"
#include "Platform/SystemLayout.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestFileItem : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { SystemLayout::reset(); }

    void equalityAndHashFollowTheIdAlone()
    {
        FileItem a;
        a.path = u"/tmp/a"_s;
        FileItem toggled = a;
        toggled.isSelected = !a.isSelected;
        toggled.note = u"changed"_s;
        QCOMPARE(toggled, a);
        QCOMPARE(qHash(toggled), qHash(a));

        FileItem twin = a;
        twin.id = QUuid::createUuid();
        QVERIFY(twin != a);
    }

    void displayPathShowsHomeAsTilde()
    {
        SystemLayout::set(u"/"_s, u"/Users/alice"_s);
        FileItem inside;
        inside.path = u"/Users/alice/Library/Caches/com.example"_s;
        QCOMPARE(inside.displayPath(), u"~/Library/Caches/com.example"_s);
        FileItem outside;
        outside.path = u"/Library/Caches/com.example"_s;
        QCOMPARE(outside.displayPath(), outside.path);
    }

    void categoryFromDisplayNameOnlyTakesDisplayNames()
    {
        QCOMPARE(fileCategoryFromDisplayName(u"Web Data & Cookies"_s), FileCategory::webData);
        QCOMPARE(fileCategoryFromDisplayName(u"webData"_s), std::nullopt);
        QCOMPARE(fileCategoryFromDisplayName(u"web data & cookies"_s), std::nullopt);
        for (const FileCategory category : allFileCategories())
            QCOMPARE(fileCategoryFromDisplayName(displayName(category)), category);
    }
};

QTEST_GUILESS_MAIN(TestFileItem)
#include "tst_FileItem.moc"
