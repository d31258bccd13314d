// SPDX-License-Identifier: MIT
#include "ViewModels/SummaryListModel.h"

#include <QAbstractItemModelTester>
#include <QtTest>

using namespace Qt::StringLiterals;
using Role = SummaryListModel::Role;

class SummaryListModelTest : public QObject
{
    Q_OBJECT

private slots:
    // The rows follow the sessions without a reset; the last row alone has no divider.
    void rowsFollowTheSessions_data()
    {
        QTest::addColumn<QList<int>>("before");
        QTest::addColumn<QList<int>>("after");
        QTest::newRow("grows") << QList<int>{0} << QList<int>{0, 1, 2};
        QTest::newRow("shrinks") << QList<int>{0, 1, 2} << QList<int>{2};
    }
    void rowsFollowTheSessions()
    {
        QFETCH(QList<int>, before);
        QFETCH(QList<int>, after);
        AppInfo c;
        c.name = u"C.app"_s;
        UninstallSession sessions[] = {UninstallSession(AppInfo{}), UninstallSession(AppInfo{}),
                                       UninstallSession(c)};
        sessions[2].setRemovedCount(3);
        sessions[2].setFailedCount(1);
        const auto pick = [&sessions](const QList<int> &indexes) {
            QList<UninstallSession *> list;
            for (const int i : indexes)
                list.append(&sessions[i]);
            return list;
        };
        SummaryListModel model;
        QAbstractItemModelTester tester(&model);
        model.setSessions(pick(before));
        QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
        model.setSessions(pick(after));
        QCOMPARE(reset.count(), 0);
        QCOMPARE(model.rowCount(), after.size());
        const QModelIndex last = model.index(model.rowCount() - 1);
        QCOMPARE(model.data(last, int(Role::name)).toString(), u"C"_s);
        QVERIFY(model.data(last, int(Role::removedText)).toString().startsWith(u"3 files · "_s));
        QCOMPARE(model.data(last, int(Role::failedText)).toString(), u"1 couldn't be removed"_s);
        QVERIFY(model.data(last, int(Role::isLast)).toBool());
        QVERIFY(after.size() == 1 || !model.data(model.index(0), int(Role::isLast)).toBool());
    }
};

QTEST_GUILESS_MAIN(SummaryListModelTest)
#include "tst_SummaryListModel.moc"
