// SPDX-License-Identifier: MIT
#include "Models/AppInfo.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestAppInfo : public QObject
{
    Q_OBJECT

private slots:
    void displayNameRemovesEveryAppSuffix_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        QTest::newRow("bundle") << u"Foo.app"_s << u"Foo"_s;
        QTest::newRow("plain") << u"Foo"_s << u"Foo"_s;
        QTest::newRow("inner too") << u"Foo.app Helper.app"_s << u"Foo Helper"_s;
        QTest::newRow("case-sensitive") << u"Foo.APP"_s << u"Foo.APP"_s;
    }
    void displayNameRemovesEveryAppSuffix()
    {
        QFETCH(QString, name);
        QFETCH(QString, expected);
        AppInfo app;
        app.name = name;
        QCOMPARE(app.displayName(), expected);
    }

    void equalityLooksAtEveryField()
    {
        AppInfo a;
        a.name = u"Foo.app"_s;
        a.bundleIdentifier = u"com.example.foo"_s;
        a.bundlePath = u"/Applications/Foo.app"_s;
        a.version = u"1.0"_s;
        a.icon = QByteArray("png");

        AppInfo copy = a;
        QCOMPARE(copy, a);
        QCOMPARE(qHash(copy), qHash(a));

        copy.isSystemProtected = true;
        QVERIFY(copy != a);

        AppInfo sameBundleLater = a;
        sameBundleLater.id = QUuid::createUuid();
        QVERIFY(sameBundleLater != a);

        AppInfo withoutIcon = a;
        withoutIcon.icon.reset();
        QVERIFY(withoutIcon != a);
        AppInfo emptyIcon = a;
        emptyIcon.icon = QByteArray();
        QVERIFY(emptyIcon != withoutIcon); // present-but-empty is not absent
        QVERIFY(qHash(emptyIcon) != qHash(withoutIcon));
    }

    void everyRecordGetsItsOwnId()
    {
        QVERIFY(AppInfo().id != AppInfo().id);
        QVERIFY(!AppInfo().id.isNull());
    }
};

QTEST_GUILESS_MAIN(TestAppInfo)
#include "tst_AppInfo.moc"
