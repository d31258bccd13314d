// SPDX-License-Identifier: MIT
#pragma once

#include "HistoryListModel.h"
#include "Removal/RestoreRun.h"
#include "RestoreReportModel.h"

#include <QDateTime>
#include <QObject>
#include <functional>
#include <optional>

// Put Back in the window: the list of past uninstalls and the restore of one of them, or of the
// run that just finished. Records are read and restores run on the thread pool; one restore
// at a time, and the history is read again after it so its counts stay true.
class PutBackPresenter : public QObject
{
    Q_OBJECT
    Q_PROPERTY(HistoryListModel *historyModel READ historyModel CONSTANT)
    Q_PROPERTY(RestoreReportModel *reportModel READ reportModel CONSTANT)
    Q_PROPERTY(State state READ state NOTIFY stateChanged)
    Q_PROPERTY(bool isBusy READ isBusy NOTIFY stateChanged)
    Q_PROPERTY(QString headline READ headline NOTIFY stateChanged)
    Q_PROPERTY(QString summary READ summary NOTIFY stateChanged)

public:
    enum class State { Idle, Loading, Restoring, Restored };
    Q_ENUM(State)

    struct Dependencies
    {
        // Every readable record, in any order; blocking.
        std::function<QList<UninstallRecord>()> loadRecords;
        // Puts one record back; blocking, and may wait on the administrator prompt.
        std::function<RestoreRun::Report(const UninstallRecord &)> restore;
    };
    // What the caller leaves out of `dependencies` is the real thing: the history of the
    // layout's home, put back through the real rights.
    explicit PutBackPresenter(const SystemLayout &layout, Dependencies dependencies = {},
                              QObject *parent = nullptr);

    [[nodiscard]] HistoryListModel *historyModel() { return &m_historyModel; }
    [[nodiscard]] RestoreReportModel *reportModel() { return &m_reportModel; }
    [[nodiscard]] State state() const { return m_state; }
    [[nodiscard]] bool isBusy() const
    {
        return m_state == State::Loading || m_state == State::Restoring;
    }
    [[nodiscard]] QString headline() const { return m_headline; }
    [[nodiscard]] QString summary() const { return m_summary; }

    Q_INVOKABLE void loadHistory();
    // Puts back the record of the history's row.
    Q_INVOKABLE void putBack(int row);
    // Puts back the newest uninstall that started at or after `started`: the run the window
    // just finished.
    Q_INVOKABLE void putBackRunStartedAt(const QDateTime &started);
    // Back to the list after reading a summary.
    Q_INVOKABLE void dismissSummary();

    // The newest record written at or after `started`, when there is one.
    [[nodiscard]] static std::optional<UninstallRecord>
    recordStartedAt(const QList<UninstallRecord> &records, const QDateTime &started);
    // Newest first.
    [[nodiscard]] static QList<UninstallRecord> newestFirst(QList<UninstallRecord> records);
    // The summary's headline for a finished restore.
    [[nodiscard]] static QString headlineFor(const RestoreRun::Report &report);

signals:
    void stateChanged();

private:
    // Runs `choose` on the loaded records off the GUI thread and restores what it picks.
    void restoreChosen(
        std::function<std::optional<UninstallRecord>(const QList<UninstallRecord> &)> choose);
    void setState(State state, const QString &headline = {}, const QString &summary = {});

    Dependencies m_dependencies;
    HistoryListModel m_historyModel;
    RestoreReportModel m_reportModel;
    State m_state = State::Idle;
    QString m_headline;
    QString m_summary;
};
