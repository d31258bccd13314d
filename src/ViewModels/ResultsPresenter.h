// SPDX-License-Identifier: MIT
#pragma once

#include "LogListModel.h"
#include "MainViewModel.h"
#include "ResultsListModel.h"
#include "SummaryListModel.h"

#include <QObject>
#include <QPointer>
#include <QVariantList>

// What the results screen shows, derived from the controller: which body, the header, the
// footer texts and buttons, the confirmation and the completion summary. Recomputed once per
// turn of the event loop after any change; each group of properties notifies only when one of
// its values differs, so a burst of selection changes repaints the footer and nothing else.
class ResultsPresenter : public QObject
{
    Q_OBJECT
    Q_PROPERTY(MainViewModel *viewModel READ viewModel WRITE setViewModel NOTIFY viewModelChanged)
    Q_PROPERTY(ResultsListModel *listModel READ listModel CONSTANT)
    Q_PROPERTY(LogListModel *logModel READ logModel CONSTANT)
    Q_PROPERTY(SummaryListModel *summaryModel READ summaryModel CONSTANT)

    Q_PROPERTY(QString revealText READ revealText CONSTANT)
    Q_PROPERTY(Body body READ body NOTIFY bodyChanged)
    Q_PROPERTY(bool isSingleSession READ isSingleSession NOTIFY bodyChanged)
    Q_PROPERTY(bool isSingleSIPApp READ isSingleSIPApp NOTIFY bodyChanged)
    Q_PROPERTY(QString statusText READ statusText NOTIFY bodyChanged)

    Q_PROPERTY(QString batchName READ batchName NOTIFY headerChanged)
    Q_PROPERTY(QString headerTitle READ headerTitle NOTIFY headerChanged)
    Q_PROPERTY(QString headerDetail READ headerDetail NOTIFY headerChanged)
    Q_PROPERTY(QString versionText READ versionText NOTIFY headerChanged)
    Q_PROPERTY(QStringList headerIcons READ headerIcons NOTIFY headerChanged)
    Q_PROPERTY(bool hasLogs READ hasLogs NOTIFY headerChanged)
    Q_PROPERTY(bool showsFullDiskAccessBanner READ showsFullDiskAccessBanner NOTIFY headerChanged)

    Q_PROPERTY(bool hasProtectedFiles READ hasProtectedFiles NOTIFY footerChanged)
    Q_PROPERTY(bool canUninstall READ canUninstall NOTIFY footerChanged)
    Q_PROPERTY(bool canCancel READ canCancel NOTIFY footerChanged)
    Q_PROPERTY(QString footerTitle READ footerTitle NOTIFY footerChanged)
    Q_PROPERTY(QString footerDetail READ footerDetail NOTIFY footerChanged)
    Q_PROPERTY(QString primaryButtonText READ primaryButtonText NOTIFY footerChanged)
    Q_PROPERTY(QString confirmationMessage READ confirmationMessage NOTIFY footerChanged)
    Q_PROPERTY(QString dropOverlayText READ dropOverlayText NOTIFY footerChanged)

    Q_PROPERTY(bool hasFailures READ hasFailures NOTIFY outcomeChanged)
    Q_PROPERTY(bool canPutBack READ canPutBack NOTIFY outcomeChanged)
    Q_PROPERTY(QString outcomeHeadline READ outcomeHeadline NOTIFY outcomeChanged)
    Q_PROPERTY(QString outcomeSubline READ outcomeSubline NOTIFY outcomeChanged)
    Q_PROPERTY(QString outcomeSymbol READ outcomeSymbol NOTIFY outcomeChanged)

public:
    // The body between header and footer, in the order the screen chooses it.
    enum class Body { Scanning, Uninstalling, Completed, ProtectedApp, CategoryList, AppList };
    Q_ENUM(Body)
    // What Return does on the results screen.
    enum class DefaultAction { None, Confirm, Done };
    Q_ENUM(DefaultAction)

    explicit ResultsPresenter(QObject *parent = nullptr);

    [[nodiscard]] MainViewModel *viewModel() const { return m_viewModel; }
    void setViewModel(MainViewModel *viewModel);
    [[nodiscard]] ResultsListModel *listModel() { return &m_listModel; }
    [[nodiscard]] LogListModel *logModel() { return &m_logModel; }
    [[nodiscard]] SummaryListModel *summaryModel() { return &m_summaryModel; }

    // The context menu's way to the file manager, named as the platform names it.
    [[nodiscard]] static QString revealText();
    [[nodiscard]] Body body() const;
    [[nodiscard]] bool isSingleSession() const { return sessions().size() == 1; }
    [[nodiscard]] bool isSingleSIPApp() const;
    // The state in words, for the screen reader to announce when it changes.
    [[nodiscard]] QString statusText() const;
    [[nodiscard]] bool hasProtectedFiles() const { return m_hasProtectedFiles; }
    [[nodiscard]] bool hasFailures() const;
    // Whether the finished uninstall moved anything that Put Back could return.
    [[nodiscard]] bool canPutBack() const;
    [[nodiscard]] bool hasLogs() const;
    [[nodiscard]] bool canUninstall() const;
    [[nodiscard]] bool canCancel() const;
    [[nodiscard]] bool showsFullDiskAccessBanner() const;
    [[nodiscard]] QString batchName() const;
    [[nodiscard]] QString headerTitle() const;
    [[nodiscard]] QString headerDetail() const;
    [[nodiscard]] QString versionText() const;
    [[nodiscard]] QStringList headerIcons() const;
    [[nodiscard]] QString footerTitle() const;
    [[nodiscard]] QString footerDetail() const;
    [[nodiscard]] QString primaryButtonText() const;
    [[nodiscard]] QString confirmationMessage() const;
    [[nodiscard]] QString dropOverlayText() const;
    [[nodiscard]] QString outcomeHeadline() const;
    [[nodiscard]] QString outcomeSubline() const;
    [[nodiscard]] QString outcomeSymbol() const;
    [[nodiscard]] Q_INVOKABLE DefaultAction defaultAction() const;

    // Recomputes now instead of on the next turn of the event loop.
    Q_INVOKABLE void refresh();

signals:
    void viewModelChanged();
    void bodyChanged();
    void headerChanged();
    void footerChanged();
    void outcomeChanged();

private:
    [[nodiscard]] QList<const UninstallSession *> sessions() const;
    void scheduleRefresh();
    void sessionsReplaced();

    QPointer<MainViewModel> m_viewModel;
    ResultsListModel m_listModel;
    LogListModel m_logModel;
    SummaryListModel m_summaryModel;
    QList<QMetaObject::Connection> m_connections;
    // The values each group last notified, to notify a group only when it differs.
    QVariantList m_shown[4];
    bool m_hasProtectedFiles = false;
    bool m_refreshPending = false;
};
