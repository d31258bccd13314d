// SPDX-License-Identifier: MIT
#include "ViewModels/LogListModel.h"

#include <QAbstractItemModelTester>
#include <QtTest>

using namespace Qt::StringLiterals;

using Role = LogListModel::Role;

class LogListModelTest : public QObject
{
    Q_OBJECT

private:
    static AppInfo app(const QString &name)
    {
        AppInfo info;
        info.name = name;
        return info;
    }
    static QStringList rows(const LogListModel &model)
    {
        QStringList list;
        for (int row = 0; row < model.rowCount(); ++row) {
            const QModelIndex index = model.index(row);
            const QString message = index.data(int(Role::message)).toString();
            list.append(index.data(int(Role::isHeading)).toBool() ? u'#' + message : message);
        }
        return list;
    }

private slots:
    void oneSessionHasNoHeading()
    {
        UninstallSession session(app(QStringLiteral("Foo.app")));
        LogListModel model;
        QAbstractItemModelTester tester(&model);
        model.setSessions({&session});
        QVERIFY(model.isEmpty());
        session.addLog(QStringLiteral("Found 2 files (1 KB)"), true);
        QVERIFY(!model.isEmpty());
        QCOMPARE(rows(model), QStringList{QStringLiteral("Found 2 files (1 KB)")});
        QCOMPARE(model.index(0).data(int(Role::symbol)).toString(),
                 QStringLiteral("checkmark.circle.fill"));
    }

    void entriesJoinTheirSessionsBlock()
    {
        UninstallSession a(app(QStringLiteral("A.app"))), b(app(QStringLiteral("B.app"))),
            c(app(QStringLiteral("C.app")));
        b.addLog(QStringLiteral("b1"), true);
        LogListModel model;
        QAbstractItemModelTester tester(&model);
        model.setSessions({&a, &b, &c});
        QCOMPARE(rows(model), (QStringList{u"#A"_s, u"#B"_s, u"b1"_s, u"#C"_s}));
        a.addLog(QStringLiteral("a1"), false);
        b.addLog(QStringLiteral("b2"), true);
        QCOMPARE(rows(model), (QStringList{u"#A"_s, u"a1"_s, u"#B"_s, u"b1"_s, u"b2"_s, u"#C"_s}));
        QCOMPARE(model.index(1).data(int(Role::isSuccess)).toBool(), false);
        QCOMPARE(model.index(1).data(int(Role::symbol)).toString(),
                 QStringLiteral("xmark.circle.fill"));
    }

    void timeHasHoursAndMinutesOnly()
    {
        const QDateTime at(QDate(2024, 5, 1), QTime(14, 7, 33));
        const QString text = LogListModel::timeText(at);
        QVERIFY(text.contains(QStringLiteral("07")));
        QVERIFY(!text.contains(QStringLiteral("33")));
        QVERIFY(!text.contains(QStringLiteral("2024")));
    }
};

QTEST_GUILESS_MAIN(LogListModelTest)
#include "tst_LogListModel.moc"
