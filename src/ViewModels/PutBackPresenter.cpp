// SPDX-License-Identifier: MIT
#include "PutBackPresenter.h"

#include "Removal/HistoryStore.h"

#include <QtConcurrent>

namespace {
struct Outcome
{
    std::optional<RestoreRun::Report> report; // nothing when no record matched
    QList<UninstallRecord> records;           // the history after the restore
};
PutBackPresenter::Dependencies realDependencies(const SystemLayout &layout)
{
    return PutBackPresenter::Dependencies{
        [history = HistoryStore(layout)] {
            QList<UninstallRecord> records;
            for (const QString &name : history.names()) {
                if (auto record = history.load(name))
                    records.append(*record);
            }
            return records;
        },
        [layout](const UninstallRecord &record) { return RestoreRun(layout).run(record); },
    };
}
} // namespace

PutBackPresenter::PutBackPresenter(const SystemLayout &layout, Dependencies dependencies,
                                   QObject *parent)
    : QObject(parent), m_dependencies(std::move(dependencies))
{
    const Dependencies defaults = realDependencies(layout);
    if (!m_dependencies.loadRecords)
        m_dependencies.loadRecords = defaults.loadRecords;
    if (!m_dependencies.restore)
        m_dependencies.restore = defaults.restore;
}

void PutBackPresenter::loadHistory()
{
    if (isBusy())
        return;
    setState(State::Loading);
    QtConcurrent::run([load = m_dependencies.loadRecords] {
        return newestFirst(load());
    }).then(this, [this](const QList<UninstallRecord> &records) {
        m_historyModel.setRecords(records);
        setState(State::Idle);
    });
}

void PutBackPresenter::putBack(int row)
{
    if (row < 0 || row >= m_historyModel.records().size())
        return;
    const QString fileName = m_historyModel.records().at(row).fileName;
    // Chosen again from a fresh read: another restore may have changed the record since.
    restoreChosen([fileName](const QList<UninstallRecord> &records) {
        std::optional<UninstallRecord> chosen;
        for (const UninstallRecord &record : records) {
            if (record.fileName == fileName)
                chosen = record;
        }
        return chosen;
    });
}

void PutBackPresenter::putBackRunStartedAt(const QDateTime &started)
{
    if (!started.isValid())
        return;
    restoreChosen([started](const QList<UninstallRecord> &records) {
        return recordStartedAt(records, started);
    });
}

void PutBackPresenter::restoreChosen(
    std::function<std::optional<UninstallRecord>(const QList<UninstallRecord> &)> choose)
{
    if (isBusy())
        return;
    setState(State::Restoring, QStringLiteral("Putting back…"));
    QtConcurrent::run([dependencies = m_dependencies, choose = std::move(choose)] {
        Outcome outcome;
        if (const auto record = choose(dependencies.loadRecords())) {
            outcome.report = dependencies.restore(*record);
        }
        outcome.records = newestFirst(dependencies.loadRecords());
        return outcome;
    }).then(this, [this](const Outcome &outcome) {
        m_historyModel.setRecords(outcome.records);
        if (!outcome.report) {
            m_reportModel.setReport({});
            setState(State::Restored, QStringLiteral("Nothing to put back"),
                     QStringLiteral("The record of this uninstall could not be read."));
            return;
        }
        m_reportModel.setReport(*outcome.report);
        setState(State::Restored, headlineFor(*outcome.report), outcome.report->summary());
    });
}

void PutBackPresenter::dismissSummary()
{
    if (m_state == State::Restored)
        setState(State::Idle);
}

std::optional<UninstallRecord>
PutBackPresenter::recordStartedAt(const QList<UninstallRecord> &records, const QDateTime &started)
{
    std::optional<UninstallRecord> newest;
    // The removal writes its record after the window hands the batch over, never before.
    for (const UninstallRecord &record : records) {
        if (record.time >= started && (!newest || record.time >= newest->time))
            newest = record;
    }
    return newest;
}

QList<UninstallRecord> PutBackPresenter::newestFirst(QList<UninstallRecord> records)
{
    std::stable_sort(records.begin(), records.end(),
                     [](const auto &a, const auto &b) { return a.time > b.time; });
    return records;
}

QString PutBackPresenter::headlineFor(const RestoreRun::Report &report)
{
    if (report.count(RestoreRun::Outcome::restored) == 0)
        return QStringLiteral("Nothing was put back");
    return report.isComplete() ? QStringLiteral("Everything Is Back")
                               : QStringLiteral("Some Items Stayed in the Trash");
}

void PutBackPresenter::setState(State state, const QString &headline, const QString &summary)
{
    m_state = state;
    m_headline = headline;
    m_summary = summary;
    emit stateChanged();
}
