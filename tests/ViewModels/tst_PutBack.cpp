// SPDX-License-Identifier: MIT
// Put Back in the window: the history's rows, the restore's report and the presenter's choices.
#include "ViewModels/PutBackPresenter.h"

#include <QAbstractItemModelTester>
#include <QRegularExpression>
#include <QSemaphore>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using State = UninstallRecord::State;
using Outcome = RestoreRun::Outcome;

namespace {
const QDateTime kStart = QDateTime::fromString(u"2026-05-04T10:00:00.000Z"_s, Qt::ISODateWithMs);

UninstallRecord record(const QString &name, int secondsAfterStart, const QList<State> &states)
{
    UninstallRecord result;
    result.fileName = name;
    result.time = kStart.addSecs(secondsAfterStart);
    for (qsizetype i = 0; i < states.size(); ++i) {
        UninstallRecord::Item item;
        item.path = "/item/" + QByteArray::number(i);
        item.app = u"Writer"_s;
        item.size = 1000;
        item.state = states.at(i);
        result.items.append(item);
    }
    return result;
}

RestoreRun::Report report(const QList<Outcome> &outcomes)
{
    RestoreRun::Report result;
    for (qsizetype i = 0; i < outcomes.size(); ++i) {
        RestoreRun::ItemReport line;
        line.item.path = "/item/" + QByteArray::number(i);
        line.outcome = outcomes.at(i);
        result.items.append(line);
    }
    return result;
}

QVariant cell(const QAbstractItemModel &model, int row, auto role)
{
    return model.data(model.index(row, 0), int(role));
}
} // namespace

class TestPutBack : public QObject
{
    Q_OBJECT

private slots:
    // A history row: whether anything can still be put back, and in words what was and is.
    void historyRows()
    {
        HistoryListModel model;
        QAbstractItemModelTester tester(&model);
        model.setRecords({record(u"all in the Trash"_s, 0, {State::moved, State::moved}),
                          record(u"all put back"_s, 0, {State::restored}),
                          record(u"partly put back; a planned item never counts"_s, 0,
                                 {State::moved, State::restored, State::planned}),
                          record(u"interrupted before any move"_s, 0, {State::planned})});
        const QStringList patterns{u"^2 items, .*KB$"_s, u"^1 item, .* · all put back$"_s,
                                   u"^2 items, .* · 1 put back$"_s, u"^0 items, .*KB$"_s};
        using Role = HistoryListModel::Role;
        for (int row = 0; row < model.rowCount(); ++row) {
            const QString shown = cell(model, row, Role::detailText).toString();
            QVERIFY2(QRegularExpression(patterns.value(row)).match(shown).hasMatch(),
                     qPrintable(shown));
            QVERIFY(cell(model, row, Role::accessibleName).toString().contains(shown));
            QCOMPARE(cell(model, row, Role::canPutBack).toBool(), row % 2 == 0);
        }
        QCOMPARE(model.rowCount(), patterns.size());
    }

    // The newest record since the start, the start itself included; never an earlier run's.
    void recordOfTheRunJustFinished()
    {
        const QList<UninstallRecord> records{record(u"before"_s, -10, {}), record(u"late"_s, 3, {}),
                                             record(u"early"_s, 1, {})};
        QStringList chosen;
        for (const int startedAfter : {0, 3, 5}) {
            const auto found =
                PutBackPresenter::recordStartedAt(records, kStart.addSecs(startedAfter));
            chosen << (found ? found->fileName : u"none"_s);
        }
        QCOMPARE(chosen, (QStringList{u"late"_s, u"late"_s, u"none"_s}));
    }

    // What stayed in the Trash comes first, with the reason, and the headline says so.
    void reportListsWhatStayedFirst()
    {
        RestoreReportModel model;
        QAbstractItemModelTester tester(&model);
        RestoreRun::Report run = report(
            {Outcome::restored, Outcome::occupied, Outcome::alreadyRestored, Outcome::failed});
        run.items[3].message = u"Permission denied"_s;
        model.setReport(run);
        using Role = RestoreReportModel::Role;
        QStringList paths;
        QList<bool> back;
        for (int row = 0; row < model.rowCount(); ++row) {
            paths << cell(model, row, Role::path).toString();
            back << cell(model, row, Role::isBack).toBool();
        }
        QCOMPARE(paths, QStringList({u"/item/1"_s, u"/item/3"_s, u"/item/0"_s, u"/item/2"_s}));
        QCOMPARE(back, QList({false, false, true, true}));
        QVERIFY(cell(model, 1, Role::outcomeText).toString().endsWith(u"Permission denied"_s));
        QCOMPARE(PutBackPresenter::headlineFor(run), u"Some Items Stayed in the Trash"_s);
        QCOMPARE(PutBackPresenter::headlineFor(report({Outcome::canceled})),
                 u"Nothing was put back"_s);
    }

    // The row's record is put back, once, and the history is read again afterwards.
    void putBackRestoresTheRowsRecordOnce()
    {
        QList<UninstallRecord> stored{record(u"old"_s, 0, {State::moved}),
                                      record(u"new"_s, 60, {State::moved})};
        QStringList restored;
        QSemaphore running; // the first restore is still under way when the second is asked for
        PutBackPresenter::Dependencies dependencies;
        dependencies.loadRecords = [&] { return stored; };
        dependencies.restore = [&](const UninstallRecord &chosen) {
            running.acquire();
            restored << chosen.fileName;
            stored[0].items[0].state = State::restored;
            return report({Outcome::restored, Outcome::forgotten}); // both count as back
        };
        PutBackPresenter presenter(SystemLayout(u"/"_s), dependencies);
        presenter.loadHistory();
        QTRY_COMPARE(presenter.state(), PutBackPresenter::State::Idle);
        using Role = HistoryListModel::Role;
        QCOMPARE(cell(*presenter.historyModel(), 0, Role::fileName).toString(), u"new"_s);

        presenter.putBack(1);
        presenter.putBack(0); // ignored: one restore at a time
        running.release(2);
        QTRY_COMPARE(presenter.state(), PutBackPresenter::State::Restored);
        QCOMPARE(restored, QStringList{u"old"_s});
        QCOMPARE(presenter.headline(), u"Everything Is Back"_s);
        QVERIFY(!cell(*presenter.historyModel(), 1, Role::canPutBack).toBool());
    }
};

QTEST_GUILESS_MAIN(TestPutBack)
#include "tst_PutBack.moc"
