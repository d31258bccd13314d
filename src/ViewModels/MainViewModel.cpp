// SPDX-License-Identifier: MIT
#include "MainViewModel.h"

#include "AppInfoReader.h"
#include "Discovery/FileDiscoveryService.h"
#include "Discovery/OrphanFinder.h"
#include "LeftoverSessions.h"
#include "Models/ByteCountFormatter.h"
#include "Platform/Bundle.h"
#include "Removal/UninstallService.h"

#include <QDir>
#include <QFileInfo>
#include <QtConcurrent>

namespace {
const QString kOnlyAppsNotice =
    QStringLiteral("Only apps can be quenzed. Drag an app from your Applications folder.");
const QString kItselfNotice = QStringLiteral("Quenzo can't uninstall itself.");
const QString kNoLeftoversNotice = QStringLiteral("No leftovers of deleted apps were found.");
const QString kSettingsUrl =
    QStringLiteral("x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles");

QSharedPointer<UninstallSession> makeSession(const AppInfo &placeholder)
{
    // deleteLater: QML may still hold the object for the rest of the current event.
    return QSharedPointer<UninstallSession>(new UninstallSession(placeholder),
                                            &QObject::deleteLater);
}

template <typename T> void orDefault(T &dependency, const T &fallback)
{
    if (!dependency)
        dependency = fallback;
}

bool hasStatus(const QList<QSharedPointer<UninstallSession>> &sessions, UninstallStatus::Kind kind)
{
    return std::any_of(sessions.cbegin(), sessions.cend(),
                       [kind](const auto &session) { return session->status().kind() == kind; });
}

MainViewModel::Dependencies realDependencies(const SystemLayout &layout)
{
    const auto discovery = std::make_shared<FileDiscoveryService>(layout);
    return MainViewModel::Dependencies{
        discovery,
        std::make_shared<UninstallService>(layout),
        [] { return Bundle::mainBundleIdentifier(); },
        [discovery] { return discovery->hasFullDiskAccess(); },
        [](const QUrl &) {},
        [](const QString &) {},
        [](const QByteArray &icon) { return icon; },
        [layout] { return OrphanFinder(layout).find(); },
    };
}
} // namespace

MainViewModel::MainViewModel(SystemLayout layout, Dependencies dependencies, QObject *parent)
    : QObject(parent), m_layout(std::move(layout)), m_dependencies(std::move(dependencies)),
      m_putBack(m_layout), m_appPicker(m_layout)
{
    const Dependencies defaults = realDependencies(m_layout);
    orDefault(m_dependencies.discovery, defaults.discovery);
    orDefault(m_dependencies.uninstall, defaults.uninstall);
    orDefault(m_dependencies.ownBundleIdentifier, defaults.ownBundleIdentifier);
    orDefault(m_dependencies.fullDiskAccessProbe, defaults.fullDiskAccessProbe);
    orDefault(m_dependencies.openUrl, defaults.openUrl);
    orDefault(m_dependencies.copyText, defaults.copyText);
    orDefault(m_dependencies.shapeIcon, defaults.shapeIcon);
    orDefault(m_dependencies.findLeftovers, defaults.findLeftovers);
    m_hasFullDiskAccess = m_dependencies.fullDiskAccessProbe();
}

MainViewModel::~MainViewModel()
{
    for (const auto &connection : std::as_const(m_sessionObservers))
        disconnect(connection);
}

void MainViewModel::dismissNotice()
{
    if (!m_notice)
        return;
    emit willChange();
    m_notice.reset();
    emit noticeChanged();
}

bool MainViewModel::isScanning() const
{
    return hasStatus(m_sessions, UninstallStatus::Kind::scanning);
}

bool MainViewModel::isProcessing() const
{
    return hasStatus(m_sessions, UninstallStatus::Kind::processing);
}

bool MainViewModel::isCompleted() const
{
    return !m_sessions.isEmpty() &&
           std::all_of(m_sessions.cbegin(), m_sessions.cend(), [](const auto &session) {
               return session->status().kind() == UninstallStatus::Kind::completed;
           });
}

QList<QSharedPointer<UninstallSession>> MainViewModel::removableSessions() const
{
    QList<QSharedPointer<UninstallSession>> result;
    std::copy_if(m_sessions.cbegin(), m_sessions.cend(), std::back_inserter(result),
                 [](const auto &session) { return !session->appInfo().isSystemProtected; });
    return result;
}

int MainViewModel::selectedFilesCount() const
{
    int count = 0;
    for (const auto &session : removableSessions())
        count += session->selectedFilesCount();
    return count;
}

qint64 MainViewModel::totalSize() const
{
    qint64 total = 0;
    for (const auto &session : removableSessions()) {
        if (qAddOverflow(total, session->totalSize(), &total))
            return std::numeric_limits<qint64>::max();
    }
    return total;
}

bool MainViewModel::canUninstall() const
{
    if (isScanning() || isProcessing() || isCompleted())
        return false;
    return selectedFilesCount() > 0;
}

void MainViewModel::handleDroppedFiles(const QList<QUrl> &urls)
{
    if (isProcessing())
        return;
    QStringList apps;
    for (const QUrl &url : urls) {
        if (url.isLocalFile() &&
            AppInfoReader::pathExtension(url.toLocalFile()) == QLatin1String("app"))
            apps.append(url.toLocalFile());
    }
    if (apps.isEmpty()) {
        setNotice(kOnlyAppsNotice);
        return;
    }
    if (isCompleted())
        setSessions({});
    for (const QString &path : std::as_const(apps)) {
        if (isListed(path))
            continue;
        AppInfo placeholder;
        placeholder.name = AppInfoReader::lastPathComponent(path);
        placeholder.bundleIdentifier = QStringLiteral("scanning...");
        placeholder.bundlePath = path;
        const auto session = makeSession(placeholder);
        setSessions(m_sessions + QList{session});
        // Started from the event loop, so every bundle of the drop is listed before any is read.
        QMetaObject::invokeMethod(
            this, [this, session, path] { scan(session, path); }, Qt::QueuedConnection);
    }
}

bool MainViewModel::isListed(const QString &bundlePath) const
{
    const QString standardized = QDir::cleanPath(bundlePath);
    return std::any_of(m_sessions.cbegin(), m_sessions.cend(), [&](const auto &session) {
        return QDir::cleanPath(session->appInfo().bundlePath) == standardized;
    });
}

void MainViewModel::scan(const QSharedPointer<UninstallSession> &session, const QString &bundlePath)
{
    // The bundle is the user's and may be slow or hostile to read: never on this thread.
    QtConcurrent::run([layout = m_layout, bundlePath, shapeIcon = m_dependencies.shapeIcon] {
        return AppInfoReader::readWithIcon(layout, bundlePath, shapeIcon);
    }).then(this, [this, session, bundlePath](const std::optional<AppInfo> &record) {
        if (!m_sessions.contains(session))
            return; // removed from the list while its bundle was read
        if (!record) {
            removeSession(session.get());
            setNotice(AppInfoReader::lastPathComponent(bundlePath) +
                      QStringLiteral(" couldn't be read as an app."));
            return;
        }
        const auto ownIdentifier = m_dependencies.ownBundleIdentifier();
        if (ownIdentifier && *ownIdentifier == record->bundleIdentifier) {
            removeSession(session.get());
            setNotice(kItselfNotice);
            return;
        }
        session->setAppInfo(*record);
        discover(session);
    });
}

void MainViewModel::discover(const QSharedPointer<UninstallSession> &session)
{
    const auto discovery = m_dependencies.discovery;
    const AppInfo app = session->appInfo();
    QtConcurrent::run([discovery, app] {
        return discovery->discoverFiles(app);
    }).then(this, [session](const QList<FileItem> &files) {
        session->setDiscoveredFiles(files);
        session->setStatus(UninstallStatus::ready());
        session->addLog(QStringLiteral("Found %1 files (%2)")
                            .arg(files.size())
                            .arg(formattedByteCount(session->totalSize())),
                        true);
    });
}

void MainViewModel::removeSession(UninstallSession *session)
{
    QList<QSharedPointer<UninstallSession>> kept;
    std::copy_if(m_sessions.cbegin(), m_sessions.cend(), std::back_inserter(kept),
                 [session](const auto &listed) { return listed.get() != session; });
    setSessions(kept);
}

void MainViewModel::clearSessions()
{
    setSessions({});
}

void MainViewModel::uninstall()
{
    QList<QSharedPointer<UninstallSession>> chosen;
    std::copy_if(m_sessions.cbegin(), m_sessions.cend(), std::back_inserter(chosen),
                 [](const auto &session) {
                     return session->status() == UninstallStatus::ready() &&
                            session->selectedFilesCount() >= 1 &&
                            !session->appInfo().isSystemProtected;
                 });
    if (chosen.isEmpty())
        return;
    m_uninstallStarted = QDateTime::currentDateTimeUtc();
    setSessions(chosen);
    // The service reports through the sessions themselves; nothing follows its completion here.
    (void)m_dependencies.uninstall->uninstall(chosen);
}

void MainViewModel::findLeftovers()
{
    if (m_findingLeftovers || isProcessing())
        return;
    setFindingLeftovers(true);
    QtConcurrent::run(m_dependencies.findLeftovers)
        .then(this, [this](const QList<OrphanGroup> &groups) {
            setFindingLeftovers(false);
            showLeftovers(groups);
        });
}

void MainViewModel::showLeftovers(const QList<OrphanGroup> &groups)
{
    if (isProcessing())
        return; // an uninstall started meanwhile keeps its screen
    const QList<LeftoverSessions::Entry> entries = LeftoverSessions::fromGroups(groups);
    if (entries.isEmpty()) {
        setNotice(kNoLeftoversNotice);
        return;
    }
    QList<QSharedPointer<UninstallSession>> sessions;
    for (const LeftoverSessions::Entry &entry : entries) {
        const auto session = makeSession(entry.app);
        session->setDiscoveredFiles(entry.items);
        session->setStatus(UninstallStatus::ready());
        session->addLog(QStringLiteral("Found %1 leftovers (%2)")
                            .arg(entry.items.size())
                            .arg(formattedByteCount(session->totalSize())),
                        true);
        sessions.append(session);
    }
    setSessions(sessions);
}

void MainViewModel::setFindingLeftovers(bool finding)
{
    emit willChange();
    m_findingLeftovers = finding;
    emit findingLeftoversChanged();
}

void MainViewModel::refreshFullDiskAccess()
{
    const bool granted = m_dependencies.fullDiskAccessProbe();
    if (granted == m_hasFullDiskAccess)
        return;
    emit willChange();
    m_hasFullDiskAccess = granted;
    emit hasFullDiskAccessChanged();
}

void MainViewModel::openFullDiskAccessSettings()
{
    const QUrl url(kSettingsUrl);
    if (url.isValid())
        m_dependencies.openUrl(url);
}

void MainViewModel::openTrash()
{
    m_dependencies.openUrl(QUrl::fromLocalFile(m_layout.trashDirectory()));
}

QUrl MainViewModel::applicationsFolder() const
{
    return QUrl::fromLocalFile(m_layout.path(QStringLiteral("/Applications")));
}

void MainViewModel::revealInFileManager(const QString &path)
{
    m_dependencies.openUrl(QUrl::fromLocalFile(QFileInfo(path).absolutePath()));
}

void MainViewModel::copyPath(const QString &path)
{
    m_dependencies.copyText(m_layout.macPath(path).value_or(path));
}

void MainViewModel::setSessions(const QList<QSharedPointer<UninstallSession>> &sessions)
{
    emit willChange();
    m_sessions = sessions;
    m_sessionModel.setSessions(sessions);
    observeSessions();
    emit sessionsChanged();
    emit stateChanged();
    emit totalsChanged();
}

void MainViewModel::setNotice(const QString &text)
{
    emit willChange();
    m_notice = text;
    emit noticeChanged();
}

void MainViewModel::observeSessions()
{
    for (const auto &connection : std::as_const(m_sessionObservers))
        disconnect(connection);
    m_sessionObservers.clear();
    for (const auto &session : std::as_const(m_sessions)) {
        UninstallSession *raw = session.get();
        m_sessionObservers.append(
            connect(raw, &UninstallSession::willChange, this, &MainViewModel::willChange));
        m_sessionObservers.append(connect(raw, &UninstallSession::statusChanged, this, [this] {
            emit stateChanged();
            emit totalsChanged();
        }));
        m_sessionObservers.append(
            connect(raw, &UninstallSession::selectionChanged, this, &MainViewModel::totalsChanged));
        m_sessionObservers.append(
            connect(raw, &UninstallSession::appInfoChanged, this, &MainViewModel::totalsChanged));
    }
}
