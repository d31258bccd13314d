// SPDX-License-Identifier: MIT
#pragma once

#include "Models/AppInfo.h"
#include "Models/FileItem.h"

#include <QList>

// Finds everything an application left outside its bundle. Holds no mutable state, so several
// discoveries may run at once on the thread pool.
class FileDiscoveryService
{
public:
    FileDiscoveryService();
    virtual ~FileDiscoveryService() = default;

    // The bundle first, then what was found. Never fails; blocking, run it off the GUI thread.
    [[nodiscard]] virtual QList<FileItem> discoverFiles(const AppInfo &app) const;

    // Whether this process can read the folders the system protects.
    [[nodiscard]] static bool hasFullDiskAccess();
};
