// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <memory>
#include <optional>

// One running application as the process table shows it. Linux knows only the executable;
// macOS also reports the bundle and its identifier.
struct RunningApplication
{
    qint64 processIdentifier = 0;
    std::optional<QString> bundleIdentifier;
    std::optional<QString> bundlePath;
    std::optional<QString> executablePath;
    // When the process started (Linux: clock ticks after boot), so that a process identifier
    // reused by a newer process is never signalled.
    quint64 startTime = 0;
};

// The running applications and the two ways of asking one to quit. Linux: the process table
// under /proc; macOS: NSWorkspace. Tests hand ProcessService a fake.
class RunningApplications
{
public:
    virtual ~RunningApplications() = default;

    [[nodiscard]] virtual QList<RunningApplication> list() const = 0;
    [[nodiscard]] virtual qint64 ownProcessIdentifier() const = 0;
    virtual void terminate(const RunningApplication &application) = 0;
    virtual void forceTerminate(const RunningApplication &application) = 0;
    [[nodiscard]] virtual bool isTerminated(const RunningApplication &application) const = 0;
};
