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
    emit changed();
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

ResultsPresenter::Body ResultsPresenter::body() const
{
    const auto list = sessions();
    if (!m_viewModel || list.isEmpty())
        return Body::scanning;
    const bool allScanning = std::all_of(list.cbegin(), list.cend(), [](const auto *session) {
        return session->status().kind() == UninstallStatus::Kind::scanning;
    });
    if (allScanning)
        return Body::scanning;
    if (m_viewModel->isProcessing())
        return Body::uninstalling;
    if (m_viewModel->isCompleted())
        return Body::completed;
    if (isSingleSIPApp())
        return Body::protectedApp;
    return list.size() == 1 ? Body::categoryList : Body::appList;
}

QString ResultsPresenter::bodyName() const
{
    return QString::fromLatin1(QMetaEnum::fromType<Body>().valueToKey(int(body())));
}

bool ResultsPresenter::isSingleSIPApp() const
{
    const auto list = sessions();
    return list.size() == 1 && ResultsRules::isSIPProtected(*list.constFirst());
}

bool ResultsPresenter::hasFailures() const
{
    return ResultsRules::hasFailures(sessions());
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

QString ResultsPresenter::selectedText() const
{
    return QString::number(m_viewModel ? m_viewModel->selectedFilesCount() : 0) +
           QStringLiteral(" files selected");
}

QString ResultsPresenter::totalSizeText() const
{
    return QStringLiteral("Total size: ") +
           formattedByteCount(m_viewModel ? m_viewModel->totalSize() : 0);
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

QString ResultsPresenter::removedTotalText() const
{
    int total = 0;
    for (const auto *session : sessions())
        total += session->removedCount();
    return QString::number(total) + QStringLiteral(" files removed");
}

QVariantList ResultsPresenter::summaryRows() const
{
    QVariantList rows;
    for (const auto *session : sessions()) {
        const QString failed =
            session->failedCount() > 0
                ? QString::number(session->failedCount()) + QStringLiteral(" couldn't be removed")
                : QString();
        rows.append(QVariantMap{
            {QStringLiteral("name"), session->displayName()},
            {QStringLiteral("iconSource"), ResultsRules::iconSource(session->appInfo())},
            {QStringLiteral("removedText"), QString::number(session->removedCount()) +
                                                QStringLiteral(" files · ") +
                                                formattedByteCount(session->removedBytes())},
            {QStringLiteral("failedText"), failed},
        });
    }
    return rows;
}

QString ResultsPresenter::dropOverlayText() const
{
    return m_viewModel && m_viewModel->isCompleted() ? QStringLiteral("Drop to quenz")
                                                     : QStringLiteral("Drop to add to the list");
}
