// SPDX-License-Identifier: MIT
#pragma once

#include "AppPickerModel.h"
#include "Discovery/OrphanGroup.h"
#include "Models/UninstallSession.h"
#include "Platform/SystemLayout.h"
#include "PutBackPresenter.h"
#include "SessionListModel.h"

#include <QDateTime>

#include <QList>
#include <QObject>
#include <QSharedPointer>
#include <QUrl>
#include <functional>
#include <memory>
#include <optional>

class FileDiscoveryService;
class UninstallService;

// The application controller: the sessions of the dropped apps, the notice for the user, the
// flags and totals the views show, and the verbs behind the drop and the buttons. Lives on the
// GUI thread; re-emits every change of a listed session as its own willChange().
class MainViewModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(SessionListModel *sessionModel READ sessionModel CONSTANT)
    Q_PROPERTY(PutBackPresenter *putBack READ putBack CONSTANT)
    Q_PROPERTY(AppPickerModel *appPicker READ appPicker CONSTANT)
    Q_PROPERTY(int sessionCount READ sessionCount NOTIFY sessionsChanged)
    Q_PROPERTY(QString notice READ noticeText NOTIFY noticeChanged)
    Q_PROPERTY(bool hasNotice READ hasNotice NOTIFY noticeChanged)
    Q_PROPERTY(bool isScanning READ isScanning NOTIFY stateChanged)
    Q_PROPERTY(bool isProcessing READ isProcessing NOTIFY stateChanged)
    Q_PROPERTY(bool isCompleted READ isCompleted NOTIFY stateChanged)
    Q_PROPERTY(bool hasFullDiskAccess READ hasFullDiskAccess NOTIFY hasFullDiskAccessChanged)
    Q_PROPERTY(int selectedFilesCount READ selectedFilesCount NOTIFY totalsChanged)
    Q_PROPERTY(qint64 totalSize READ totalSize NOTIFY totalsChanged)
    Q_PROPERTY(bool canUninstall READ canUninstall NOTIFY totalsChanged)
    Q_PROPERTY(bool isFindingLeftovers READ isFindingLeftovers NOTIFY findingLeftoversChanged)
    Q_PROPERTY(QDateTime uninstallStarted READ uninstallStarted NOTIFY stateChanged)

public:
    // What the controller works with; tests replace any of it.
    struct Dependencies
    {
        std::shared_ptr<FileDiscoveryService> discovery;
        std::shared_ptr<UninstallService> uninstall;
        std::function<std::optional<QString>()> ownBundleIdentifier;
        std::function<bool()> fullDiskAccessProbe;
        // Opening a URL and the clipboard need Qt Gui, which only the window links: the window
        // hands them in.
        std::function<void(const QUrl &)> openUrl;
        std::function<void(const QString &)> copyText;
        // An app's icon as the window shows it (its corners cut); unchanged by default.
        std::function<QByteArray(const QByteArray &)> shapeIcon;
        // The leftovers of deleted apps; blocking, called off the GUI thread.
        std::function<QList<OrphanGroup>()> findLeftovers;
    };
    // What the caller leaves out of `dependencies` is the real thing: the services on the layout,
    // this program's own identifier and the real probe; opening URLs and copying do nothing.
    explicit MainViewModel(SystemLayout layout, Dependencies dependencies = {},
                           QObject *parent = nullptr);
    ~MainViewModel() override;

    [[nodiscard]] const QList<QSharedPointer<UninstallSession>> &sessions() const
    {
        return m_sessions;
    }
    [[nodiscard]] SessionListModel *sessionModel() { return &m_sessionModel; }
    [[nodiscard]] PutBackPresenter *putBack() { return &m_putBack; }
    [[nodiscard]] AppPickerModel *appPicker() { return &m_appPicker; }
    [[nodiscard]] int sessionCount() const { return int(m_sessions.size()); }

    [[nodiscard]] const std::optional<QString> &notice() const { return m_notice; }
    [[nodiscard]] QString noticeText() const { return m_notice.value_or(QString()); }
    [[nodiscard]] bool hasNotice() const { return m_notice.has_value(); }
    Q_INVOKABLE void dismissNotice();

    [[nodiscard]] bool isScanning() const;
    [[nodiscard]] bool isProcessing() const;
    [[nodiscard]] bool isCompleted() const;
    [[nodiscard]] bool hasFullDiskAccess() const { return m_hasFullDiskAccess; }
    [[nodiscard]] int selectedFilesCount() const;
    [[nodiscard]] qint64 totalSize() const;
    [[nodiscard]] bool canUninstall() const;

    // One drop: the URLs in drop order. Ignored while an uninstall runs.
    Q_INVOKABLE void handleDroppedFiles(const QList<QUrl> &urls);
    Q_INVOKABLE void removeSession(UninstallSession *session);
    Q_INVOKABLE void clearSessions();
    Q_INVOKABLE void uninstall();
    // Searches for the leftovers of deleted apps off the GUI thread, then lists each group as an
    // app of its own for the usual review, confirmation and removal.
    Q_INVOKABLE void findLeftovers();
    [[nodiscard]] bool isFindingLeftovers() const { return m_findingLeftovers; }
    // When the current batch was handed to the removal; invalid before.
    [[nodiscard]] QDateTime uninstallStarted() const { return m_uninstallStarted; }
    Q_INVOKABLE void refreshFullDiskAccess();
    Q_INVOKABLE void openFullDiskAccessSettings();
    // Shows the user's Trash folder (HOME/.Trash) in the file manager.
    Q_INVOKABLE void openTrash();
    // Where the "Add App…" dialog opens: the Mac's /Applications.
    [[nodiscard]] Q_INVOKABLE QUrl applicationsFolder() const;
    // Shows the folder that holds a found item in the file manager.
    Q_INVOKABLE void revealInFileManager(const QString &path);
    // Puts an item's path, as the Mac names it, on the clipboard.
    Q_INVOKABLE void copyPath(const QString &path);

signals:
    void willChange();
    void sessionsChanged();
    void noticeChanged();
    void stateChanged();
    void totalsChanged();
    void hasFullDiskAccessChanged();
    void findingLeftoversChanged();

private:
    [[nodiscard]] QList<QSharedPointer<UninstallSession>> removableSessions() const;
    void setSessions(const QList<QSharedPointer<UninstallSession>> &sessions);
    void setNotice(const QString &text);
    void observeSessions();
    [[nodiscard]] bool isListed(const QString &bundlePath) const;
    void scan(const QSharedPointer<UninstallSession> &session, const QString &bundlePath);
    void discover(const QSharedPointer<UninstallSession> &session);
    void showLeftovers(const QList<OrphanGroup> &groups);
    void setFindingLeftovers(bool finding);

    SystemLayout m_layout;
    Dependencies m_dependencies;
    QList<QSharedPointer<UninstallSession>> m_sessions;
    SessionListModel m_sessionModel;
    PutBackPresenter m_putBack;
    AppPickerModel m_appPicker;
    std::optional<QString> m_notice;
    bool m_hasFullDiskAccess = false;
    bool m_findingLeftovers = false;
    QDateTime m_uninstallStarted;
    QList<QMetaObject::Connection> m_sessionObservers;
};
