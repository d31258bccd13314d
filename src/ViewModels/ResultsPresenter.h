// SPDX-License-Identifier: MIT
#pragma once

#include "LogListModel.h"
#include "MainViewModel.h"
#include "ResultsListModel.h"

#include <QObject>
#include <QPointer>
#include <QVariantList>

// What the results screen shows, derived from the controller: which body, the header, the
// footer texts and buttons, the confirmation and the completion summary. Recomputed once per
// turn of the event loop after any change, so a burst of selection changes costs one update.
class ResultsPresenter : public QObject
{
    Q_OBJECT
    Q_PROPERTY(MainViewModel *viewModel READ viewModel WRITE setViewModel NOTIFY viewModelChanged)
    Q_PROPERTY(ResultsListModel *listModel READ listModel CONSTANT)
    Q_PROPERTY(LogListModel *logModel READ logModel CONSTANT)
    Q_PROPERTY(Body body READ body NOTIFY changed)
    Q_PROPERTY(QString bodyName READ bodyName NOTIFY changed)
    Q_PROPERTY(bool isSingleSession READ isSingleSession NOTIFY changed)
    Q_PROPERTY(bool isSingleSIPApp READ isSingleSIPApp NOTIFY changed)
    Q_PROPERTY(bool hasProtectedFiles READ hasProtectedFiles NOTIFY changed)
    Q_PROPERTY(bool hasFailures READ hasFailures NOTIFY changed)
    Q_PROPERTY(bool hasLogs READ hasLogs NOTIFY changed)
    Q_PROPERTY(bool canUninstall READ canUninstall NOTIFY changed)
    Q_PROPERTY(bool showsFullDiskAccessBanner READ showsFullDiskAccessBanner NOTIFY changed)
    Q_PROPERTY(QString batchName READ batchName NOTIFY changed)
    Q_PROPERTY(QString headerTitle READ headerTitle NOTIFY changed)
    Q_PROPERTY(QString headerDetail READ headerDetail NOTIFY changed)
    Q_PROPERTY(QString versionText READ versionText NOTIFY changed)
    Q_PROPERTY(QStringList headerIcons READ headerIcons NOTIFY changed)
    Q_PROPERTY(QString selectedText READ selectedText NOTIFY changed)
    Q_PROPERTY(QString totalSizeText READ totalSizeText NOTIFY changed)
    Q_PROPERTY(QString primaryButtonText READ primaryButtonText NOTIFY changed)
    Q_PROPERTY(QString confirmationMessage READ confirmationMessage NOTIFY changed)
    Q_PROPERTY(QString removedTotalText READ removedTotalText NOTIFY changed)
    Q_PROPERTY(QVariantList summaryRows READ summaryRows NOTIFY changed)
    Q_PROPERTY(QString dropOverlayText READ dropOverlayText NOTIFY changed)

public:
    // The body between header and footer, in the order the screen chooses it.
    enum class Body { scanning, uninstalling, completed, protectedApp, categoryList, appList };
    Q_ENUM(Body)

    explicit ResultsPresenter(QObject *parent = nullptr);

    [[nodiscard]] MainViewModel *viewModel() const { return m_viewModel; }
    void setViewModel(MainViewModel *viewModel);
    [[nodiscard]] ResultsListModel *listModel() { return &m_listModel; }
    [[nodiscard]] LogListModel *logModel() { return &m_logModel; }

    [[nodiscard]] Body body() const;
    // The body's key ("categoryList"), as QML compares it.
    [[nodiscard]] QString bodyName() const;
    [[nodiscard]] bool isSingleSession() const { return sessions().size() == 1; }
    [[nodiscard]] bool isSingleSIPApp() const;
    [[nodiscard]] bool hasProtectedFiles() const { return m_hasProtectedFiles; }
    [[nodiscard]] bool hasFailures() const;
    [[nodiscard]] bool hasLogs() const;
    [[nodiscard]] bool canUninstall() const { return m_viewModel && m_viewModel->canUninstall(); }
    [[nodiscard]] bool showsFullDiskAccessBanner() const;
    [[nodiscard]] QString batchName() const;
    [[nodiscard]] QString headerTitle() const;
    [[nodiscard]] QString headerDetail() const;
    [[nodiscard]] QString versionText() const;
    [[nodiscard]] QStringList headerIcons() const;
    [[nodiscard]] QString selectedText() const;
    [[nodiscard]] QString totalSizeText() const;
    [[nodiscard]] QString primaryButtonText() const;
    [[nodiscard]] QString confirmationMessage() const;
    [[nodiscard]] QString removedTotalText() const;
    [[nodiscard]] QVariantList summaryRows() const;
    [[nodiscard]] QString dropOverlayText() const;

    // Recomputes now instead of on the next turn of the event loop.
    Q_INVOKABLE void refresh();

signals:
    void viewModelChanged();
    void changed();

private:
    [[nodiscard]] QList<const UninstallSession *> sessions() const;
    void scheduleRefresh();
    void sessionsReplaced();

    QPointer<MainViewModel> m_viewModel;
    ResultsListModel m_listModel;
    LogListModel m_logModel;
    QList<QMetaObject::Connection> m_connections;
    bool m_hasProtectedFiles = false;
    bool m_refreshPending = false;
};
