// SPDX-License-Identifier: MIT
#pragma once

#include "Discovery/LeftoverName.h"
#include "Models/FileCategory.h"

#include <QList>
#include <QString>
#include <QStringList>

class SystemLayout;

// One entry of a scanned folder that might be an app's leftover.
struct LeftoverEntry
{
    enum class Kind {
        plain,
        container, // a sandbox or group container
        receipt,   // an installer receipt (its bill of materials goes with it)
        launchJob,
    };

    QString path;
    FileCategory category = FileCategory::other;
    Kind kind = Kind::plain;
    LeftoverName name;
    QString packageID;          // receipts
    QStringList programBundles; // launch jobs: the app bundles their programs lie in
};

// The entries of every folder discovery scans, one level deep: the search locations, launch
// agents and daemons, installer receipts, the home folder's dot-entries and ~/.config. Never a
// folder that is itself scanned, the platform's own entries ("com.apple."), the shared
// dot-folders, or Quenzo's own data.
namespace LeftoverEntries {

[[nodiscard]] QList<LeftoverEntry> list(const SystemLayout &layout);

} // namespace LeftoverEntries
