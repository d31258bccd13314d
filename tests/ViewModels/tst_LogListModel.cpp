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
    // One app's entries stand alone; with several, each entry joins its app's block under a
    // heading, also when it comes later.
    void entriesJoinTheirSessionsBlock()
    {
        UninstallSession a(app(u"A.app"_s)), b(app(u"B.app"_s)), c(app(u"C.app"_s));
        LogListModel model;
        QAbstractItemModelTester tester(&model);
        model.setSessions({&a});
        QVERIFY(model.isEmpty());
        a.addLog(u"Found 2 files (1 KB)"_s, true);
        QCOMPARE(rows(model), QStringList{u"Found 2 files (1 KB)"_s});
        QCOMPARE(model.index(0).data(int(Role::symbol)).toString(), u"checkmark.circle.fill"_s);
        b.addLog(u"b1"_s, true);
        model.setSessions({&a, &b, &c});
        c.addLog(u"c1"_s, false);
        a.addLog(u"a2"_s, false);
        QCOMPARE(rows(model), (QStringList{u"#A"_s, u"Found 2 files (1 KB)"_s, u"a2"_s, u"#B"_s,
                                           u"b1"_s, u"#C"_s, u"c1"_s}));
        QCOMPARE(model.index(2).data(int(Role::isSuccess)).toBool(), false);
        QCOMPARE(model.index(2).data(int(Role::symbol)).toString(), u"xmark.circle.fill"_s);
    }

    void timeHasHoursAndMinutesOnly()
    {
        const QString text = LogListModel::timeText(QDateTime(QDate(2024, 5, 1), QTime(14, 7, 33)));
        QVERIFY2(text.contains(u"07"_s) && !text.contains(u"33"_s) && !text.contains(u"2024"_s),
                 qPrintable(text));
    }
};

QTEST_GUILESS_MAIN(LogListModelTest)
#include "tst_LogListModel.moc"
