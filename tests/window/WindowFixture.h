// SPDX-License-Identifier: MIT
#pragma once

#include "fakemac/FakeMac.h"

#include <QFileInfo>
#include <QObject>
#include <QStringList>
#include <QTemporaryDir>
#include <QUrl>
#include <memory>

class AuthorizationService;
class MainViewModel;
class PutBackPresenter;
class HeldDiscovery;
class TrackedUninstall;
struct FixtureGates;

// A fake Mac with the stand-in tools of discovery and removal, and a controller over it with
// the real discovery and the real uninstall. Only the administrator prompt is simulated: the
// privileged step runs the script with this process's rights, or answers as a cancelled or
// failed prompt. Two holds freeze a state for as long as a test or a screenshot needs it: a
// held app stays in "scanning", a held privileged step keeps the uninstall running. Drives the
// window in the QML tests and the screenshots.
class WindowFixture : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool fullDiskAccess MEMBER m_fullDiskAccess)
    Q_PROPERTY(QStringList openedUrls MEMBER m_openedUrls)
    Q_PROPERTY(QStringList copiedTexts MEMBER m_copiedTexts)
    // How the administrator prompt answers: "run" (granted, also for any other word), "cancel"
    // or "fail".
    Q_PROPERTY(QString privilegedShell MEMBER m_privilegedShell NOTIFY promptChanged)
    // While true, the privileged step waits (the uninstall stays running) until released.
    Q_PROPERTY(bool holdPrivilegedStep MEMBER m_holdPrivilegedStep NOTIFY promptChanged)

public:
    explicit WindowFixture(QObject *parent = nullptr);
    // Opens every hold and waits until a running uninstall has finished.
    ~WindowFixture() override;

    [[nodiscard]] QString root() const { return m_mac->root(); }

    // Lays out the fake Mac a JSON description names (see FakeMac::apply); what is wrong with
    // it, if anything.
    [[nodiscard]] std::optional<QString> applyDescription(const QString &file);

    // An app bundle at a Mac path ("/Applications/Writer.app") with an icon drawn in `color`
    // (none when empty); returns its file URL.
    Q_INVOKABLE QUrl addApp(const QString &macPath, const QString &identifier,
                            const QString &version = {}, const QString &color = {});
    // Draws the icon of the app bundle at a Mac path in `color` (Contents/Resources/AppIcon.icns,
    // as the bundle's Info.plist names it).
    Q_INVOKABLE void paintIcon(const QString &appMacPath, const QString &color);
    // A file of `size` bytes at a Mac path ("~/..." for the home); returns its real path.
    Q_INVOKABLE QString addFile(const QString &macPath, qint64 size)
    {
        return m_mac->addFile(macPath, size);
    }
    // Whether anything exists at a Mac path ("~/.Trash/Writer.app").
    Q_INVOKABLE bool exists(const QString &macPath) const
    {
        return QFileInfo::exists(m_mac->path(macPath));
    }
    // A file URL of a plain document on the fake Mac.
    Q_INVOKABLE QUrl documentUrl();
    // The application palette of the Mac's "light" or "dark" appearance.
    Q_INVOKABLE static void setAppearance(const QString &appearance);
    // The controller; one per fixture.
    Q_INVOKABLE MainViewModel *viewModel();
    // The listed session in `row`, kept owned by the controller (an object a script gets back
    // from a model's data() would otherwise be the script engine's to collect).
    Q_INVOKABLE QObject *session(int row);
    // Put Back with the real history and restore, its prompt answered like the uninstall's.
    Q_INVOKABLE PutBackPresenter *putBackPresenter();
    // Discovery of the app with this identifier waits until releaseScans().
    Q_INVOKABLE void holdScan(const QString &identifier);
    Q_INVOKABLE void releaseScans();
    // Whether the uninstall task is still running (it may outlast the sessions' completion).
    Q_INVOKABLE bool uninstallRunning() const;

signals:
    void promptChanged();

private:
    // The services on the laid-out Mac, made on first use.
    void makeServices();

    QTemporaryDir m_dir;
    std::unique_ptr<FakeMac> m_mac;
    std::shared_ptr<FixtureGates> m_gates;
    std::shared_ptr<HeldDiscovery> m_discovery;
    std::shared_ptr<TrackedUninstall> m_uninstall;
    std::shared_ptr<const AuthorizationService> m_authorization;
    MainViewModel *m_viewModel = nullptr;
    PutBackPresenter *m_putBack = nullptr;
    bool m_fullDiskAccess = true;
    QString m_privilegedShell = QStringLiteral("run");
    bool m_holdPrivilegedStep = false;
    QStringList m_openedUrls;
    QStringList m_copiedTexts;
};
