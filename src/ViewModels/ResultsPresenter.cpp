// SPDX-License-Identifier: MIT
#include "ResultsPresenter.h"

#include "Models/ByteCountFormatter.h"
#include "ResultsRules.h"

#include <QMetaEnum>
#include <QTimer>

ResultsPresenter::ResultsPresenter(QObject *parent) : QObject(parent) {}

void ResultsPresenter::setViewModel(MainViewModel *viewModel)
{
    if (viewModel == m_viewModel)
        return;
    for (const auto &connection : std::as_const(m_connections))
        disconnect(connection);
    m_connections.clear();
    m_viewModel = viewModel;
    if (viewModel) {
        const auto schedule = [this] { scheduleRefresh(); };
        m_connections << connect(viewModel, &MainViewModel::sessionsChanged, this,
                                 &ResultsPresenter::sessionsReplaced)
                      << connect(viewModel, &MainViewModel::willChange, this, schedule)
                      << connect(viewModel, &MainViewModel::stateChanged, this, schedule)
                      << connect(viewModel, &MainViewModel::totalsChanged, this, schedule)
                      << connect(viewModel, &MainViewModel::hasFullDiskAccessChanged, this,
                                 schedule);
    }
    sessionsReplaced();
    emit viewModelChanged();
}

void ResultsPresenter::sessionsReplaced()
{
    QList<UninstallSession *> list;
    if (m_viewModel) {
        for (const auto &session : m_viewModel->sessions())
            list.append(session.get());
    }
    m_listModel.setSessions(list);
    m_logModel.setSessions(list);
    m_summaryModel.setSessions(list);
    refresh();
}

void ResultsPresenter::scheduleRefresh()
{
    if (m_refreshPending)
        return;
    m_refreshPending = true;
    QTimer::singleShot(0, this, &ResultsPresenter::refresh);
}

void ResultsPresenter::refresh()
{
    m_refreshPending = false;
    m_hasProtectedFiles = ResultsRules::hasProtectedFiles(sessions());
    m_summaryModel.refresh();
    // One notify signal per group, sent only when a value of that group changed.
    const auto publish = [this](int group, const QVariantList &values,
                                void (ResultsPresenter::*notify)()) {
        if (values == m_shown[group])
            return;
        m_shown[group] = values;
        emit(this->*notify)();
    };
    publish(0, {QVariant::fromValue(body()), isSingleSession(), isSingleSIPApp(), statusText()},
            &ResultsPresenter::bodyChanged);
    publish(1,
            {headerTitle(), headerDetail(), versionText(), headerIcons(), hasLogs(),
             showsFullDiskAccessBanner()},
            &ResultsPresenter::headerChanged);
    publish(2,
            {m_hasProtectedFiles, canUninstall(), canCancel(), footerTitle(), footerDetail(),
             confirmationMessage(), dropOverlayText()},
            &ResultsPresenter::footerChanged);
    publish(3, {hasFailures(), canPutBack()}, &ResultsPresenter::outcomeChanged);
}

QList<const UninstallSession *> ResultsPresenter::sessions() const
{
    QList<const UninstallSession *> list;
    if (m_viewModel) {
        for (const auto &session : m_viewModel->sessions())
            list.append(session.get());
    }
    return list;
}

QString ResultsPresenter::revealText()
{
#ifdef Q_OS_MACOS
    return QStringLiteral("Reveal in Finder");
#else
    return QStringLiteral("Open Containing Folder");
#endif
}

ResultsPresenter::Body ResultsPresenter::body() const
{
    const auto list = sessions();
    if (!m_viewModel || list.isEmpty())
        return Body::Scanning;
    const bool allScanning = std::all_of(list.cbegin(), list.cend(), [](const auto *session) {
        return session->status().kind() == UninstallStatus::Kind::scanning;
    });
    if (allScanning)
        return Body::Scanning;
    if (m_viewModel->isProcessing())
        return Body::Uninstalling;
    if (m_viewModel->isCompleted())
        return Body::Completed;
    if (isSingleSIPApp())
        return Body::ProtectedApp;
    return list.size() == 1 ? Body::CategoryList : Body::AppList;
}

bool ResultsPresenter::isSingleSIPApp() const
{
    const auto list = sessions();
    return list.size() == 1 && list.constFirst()->isSystemProtected();
}

bool ResultsPresenter::hasFailures() const
{
    return ResultsRules::hasFailures(sessions());
}

bool ResultsPresenter::canPutBack() const
{
    if (body() != Body::Completed)
        return false;
    const auto list = sessions();
    return std::any_of(list.cbegin(), list.cend(),
                       [](const UninstallSession *session) { return session->removedCount() > 0; });
}

bool ResultsPresenter::hasLogs() const
{
    const auto list = sessions();
    return std::any_of(list.cbegin(), list.cend(),
                       [](const auto *session) { return session->logCount() > 0; });
}

bool ResultsPresenter::showsFullDiskAccessBanner() const
{
    return m_viewModel && !m_viewModel->hasFullDiskAccess() && !m_viewModel->isCompleted();
}

QString ResultsPresenter::batchName() const
{
    return ResultsRules::batchName(sessions());
}

QString ResultsPresenter::headerTitle() const
{
    const auto list = sessions();
    if (list.size() == 1)
        return list.constFirst()->displayName();
    return QString::number(list.size()) + QStringLiteral(" Apps");
}

QString ResultsPresenter::headerDetail() const
{
    const auto list = sessions();
    if (list.size() == 1)
        return list.constFirst()->bundleIdentifier();
    QStringList names;
    for (const auto *session : list)
        names.append(session->displayName());
    return names.join(QStringLiteral(", "));
}

QString ResultsPresenter::versionText() const
{
    const auto list = sessions();
    if (list.size() != 1 || !list.constFirst()->appInfo().version)
        return {};
    return QStringLiteral("Version ") + *list.constFirst()->appInfo().version;
}

QStringList ResultsPresenter::headerIcons() const
{
    QStringList icons;
    for (const auto *session : sessions().mid(0, 4))
        icons.append(ResultsRules::iconSource(session->appInfo()));
    return icons;
}

QString ResultsPresenter::primaryButtonText() const
{
    return m_hasProtectedFiles ? QStringLiteral("Uninstall") : QStringLiteral("Move to Trash");
}

QString ResultsPresenter::confirmationMessage() const
{
    if (!m_viewModel)
        return {};
    return ResultsRules::confirmationMessage(batchName(), m_viewModel->selectedFilesCount(),
                                             m_viewModel->totalSize(), m_hasProtectedFiles);
}

QString ResultsPresenter::footerTitle() const
{
    if (body() != Body::Completed)
        return QString::number(m_viewModel ? m_viewModel->selectedFilesCount() : 0) +
               QStringLiteral(" files selected");
    int total = 0;
    for (const auto *session : sessions())
        total += session->removedCount();
    return QString::number(total) + QStringLiteral(" files removed");
}

QString ResultsPresenter::footerDetail() const
{
    if (body() == Body::Completed)
        return QStringLiteral("Drop another app to quenz it");
    return QStringLiteral("Total size: ") +
           formattedByteCount(m_viewModel ? m_viewModel->totalSize() : 0);
}

QString ResultsPresenter::outcomeHeadline() const
{
    return hasFailures() ? QStringLiteral("Finished with Some Errors")
                         : QStringLiteral("Uninstall Complete");
}

QString ResultsPresenter::outcomeSubline() const
{
    return hasFailures()
               ? QStringLiteral("Some files couldn't be removed. Check the logs for details.")
               : QStringLiteral("Files moved to Trash can be restored from Finder if needed.");
}

QString ResultsPresenter::outcomeSymbol() const
{
    return hasFailures() ? QStringLiteral("exclamationmark.circle.fill")
                         : QStringLiteral("checkmark.circle.fill");
}

QString ResultsPresenter::statusText() const
{
    switch (body()) {
    case Body::Scanning:
        return QStringLiteral("Scanning for files...");
    case Body::Uninstalling:
        return QStringLiteral("Uninstalling...");
    case Body::Completed:
        return outcomeHeadline();
    case Body::ProtectedApp:
        return QStringLiteral("System app protected by SIP - Cannot be uninstalled");
    case Body::CategoryList:
    case Body::AppList:
        break;
    }
    return QStringLiteral("Scan finished: ") + footerTitle();
}

bool ResultsPresenter::canUninstall() const
{
    return m_viewModel && m_viewModel->canUninstall() && !isSingleSIPApp();
}

bool ResultsPresenter::canCancel() const
{
    return m_viewModel && !m_viewModel->isProcessing() && body() != Body::Completed;
}

ResultsPresenter::DefaultAction ResultsPresenter::defaultAction() const
{
    if (body() == Body::Completed)
        return DefaultAction::Done;
    return canUninstall() ? DefaultAction::Confirm : DefaultAction::None;
}

QString ResultsPresenter::dropOverlayText() const
{
    return m_viewModel && m_viewModel->isCompleted() ? QStringLiteral("Drop to quenz")
                                                     : QStringLiteral("Drop to add to the list");
}
