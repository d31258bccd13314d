// SPDX-License-Identifier: MIT
#pragma once

#include "support/FakeMac.h"

#include <QHash>
#include <QObject>
#include <QStringList>
#include <QTemporaryDir>
#include <QUrl>
#include <QVariantList>
#include <memory>

class MainViewModel;
class ScriptedDiscovery;
class ScriptedUninstall;

// A fake Mac with apps and their leftovers, and a controller over it whose discovery returns the
// items given here and whose uninstall waits until told to finish. Drives the window in the QML
// tests and the screenshots.
class WindowFixture : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool fullDiskAccess MEMBER m_fullDiskAccess)
    Q_PROPERTY(QStringList openedUrls READ openedUrls)
    Q_PROPERTY(QString root READ root CONSTANT)

public:
    explicit WindowFixture(QObject *parent = nullptr);
    ~WindowFixture() override;

    [[nodiscard]] QString root() const { return m_mac->root(); }
    [[nodiscard]] QStringList openedUrls() const { return m_openedUrls; }

    // An app bundle at a Mac path ("/Applications/Writer.app") with an icon drawn in `color`
    // (none when empty); returns its file URL.
    Q_INVOKABLE QUrl addApp(const QString &macPath, const QString &identifier,
                            const QString &version = {}, const QString &color = {});
    // What discovery finds for the app with this identifier, bundle first. Each item is a map:
    // path (Mac path, "~/..." for the home), category (case name), size, selected (true),
    // note, confidence (1.0), protected (false). The files are laid out with their sizes.
    Q_INVOKABLE void setItems(const QString &identifier, const QVariantList &items);
    // Items of the uninstall of this app that fail (counted, logged).
    Q_INVOKABLE void setFailures(const QString &identifier, int failures);
    // A file URL of a plain document on the fake Mac.
    Q_INVOKABLE QUrl documentUrl();
    // The controller; one per fixture.
    Q_INVOKABLE MainViewModel *viewModel();
    // Ends the running uninstall: counters, log lines, every session completed.
    Q_INVOKABLE void finishUninstall();
    // Whether an uninstall is waiting for finishUninstall().
    Q_INVOKABLE bool uninstallPending() const;

private:
    QTemporaryDir m_dir;
    std::unique_ptr<FakeMac> m_mac;
    std::shared_ptr<ScriptedDiscovery> m_discovery;
    std::shared_ptr<ScriptedUninstall> m_uninstall;
    MainViewModel *m_viewModel = nullptr;
    bool m_fullDiskAccess = true;
    QStringList m_openedUrls;
};
