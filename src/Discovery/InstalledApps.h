// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

class SystemLayout;
class ToolRunner;

// One other application on the machine, as found.
struct InstalledApp
{
    QString path;       // real path, cleaned
    QString identifier; // as the bundle declares it
};

// The other installed applications: the two Applications folders searched four levels deep
// without entering bundles, plus the metadata index asked once per identifier prefix. Each app
// once; never the excluded app (none when the path is empty), anything inside it, or anything in a
// Trash.
namespace InstalledApps {

[[nodiscard]] QList<InstalledApp> find(const SystemLayout &layout, const ToolRunner &runner,
                                       const QString &excludingPath, const QStringList &idPrefixes);

} // namespace InstalledApps
