// SPDX-License-Identifier: MIT
#pragma once

#include "Platform/SystemLayout.h"
#include "Removal/UninstallError.h"

#include <QString>
#include <QStringList>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

class RunningApplications;
struct RunningApplication;
class ToolRunner;

// What a tool run gave back: its exit status (-1 when it could not start) and its standard
// output and error together, trimmed (or the reason it could not start).
struct ProcessOutput
{
    int status = -1;
    QString output;
};

// Quits the running instances of an app, unloads launch agents and runs tools. Every call
// blocks: run it on the uninstall's background task, never on the GUI thread.
class ProcessService
{
public:
    struct Dependencies
    {
        std::shared_ptr<RunningApplications> applications;
        std::shared_ptr<const ToolRunner> tools;
        std::function<void(std::chrono::milliseconds)> sleep;
    };

    // What the caller leaves out of `dependencies` is the real thing.
    explicit ProcessService(SystemLayout layout, Dependencies dependencies = {});

    // Asks every running process of the bundle to quit, waits up to 5 s for each, forces it,
    // and fails with appNotRunning or failedToQuitApp. Never touches this process.
    [[nodiscard]] std::optional<UninstallError> quitApp(const QString &bundleIdentifier,
                                                        const QString &bundlePath) const;
    // launchctl unload PATH; failedToUnloadLaunchItem with the tool's words when it fails.
    [[nodiscard]] std::optional<UninstallError> unloadLaunchItem(const QString &path) const;
    [[nodiscard]] ProcessOutput run(const QString &executable, const QStringList &arguments) const;

private:
    [[nodiscard]] bool waitUntilTerminated(const RunningApplication &application, int polls) const;

    SystemLayout m_layout;
    Dependencies m_dependencies;
};
