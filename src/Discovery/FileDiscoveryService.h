// SPDX-License-Identifier: MIT
#pragma once

#include "Models/AppInfo.h"
#include "Models/FileItem.h"
#include "Platform/SystemLayout.h"

#include <QList>
#include <functional>
#include <memory>

class ToolRunner;

// Finds everything an application left outside its bundle. Holds no mutable state, so several
// discoveries may run at once on the thread pool.
class FileDiscoveryService
{
public:
    // Told which folder a discovery is looking at (app display name, display path). Called from
    // the discovering thread: it must be thread-safe.
    using Progress = std::function<void(const QString &appName, const QString &location)>;

    explicit FileDiscoveryService(SystemLayout layout,
                                  std::shared_ptr<const ToolRunner> runner = {},
                                  Progress progress = {});
    virtual ~FileDiscoveryService() = default;

    // The bundle first, then what was found. Never fails; blocking, run it off the GUI thread.
    [[nodiscard]] virtual QList<FileItem> discoverFiles(const AppInfo &app) const;

    // Whether this process can read the folders the system protects.
    [[nodiscard]] bool hasFullDiskAccess() const;

private:
    void report(const AppInfo &app, const QString &location) const;

    SystemLayout m_layout;
    std::shared_ptr<const ToolRunner> m_runner;
    Progress m_progress;
};
