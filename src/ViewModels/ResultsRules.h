// SPDX-License-Identifier: MIT
#pragma once

#include "Models/UninstallSession.h"

#include <QList>
#include <QString>

// The decisions of the results screen that depend only on the sessions.
namespace ResultsRules {

// Some selected item of any session lies in an administrator's folder or is not writable by us.
[[nodiscard]] bool hasProtectedFiles(const QList<const UninstallSession *> &sessions);
// The app's name for one session, "N apps" for several.
[[nodiscard]] QString batchName(const QList<const UninstallSession *> &sessions);
// Some session had items that could not be moved.
[[nodiscard]] bool hasFailures(const QList<const UninstallSession *> &sessions);
// The question asked before the uninstall starts.
[[nodiscard]] QString confirmationMessage(const QString &batchName, int fileCount, qint64 totalSize,
                                          bool hasProtectedFiles);
// "3 of 7 · 1.2 MB": selected of found, and the selected size.
[[nodiscard]] QString selectionSummary(const UninstallSession &session);
// The app's icon as an image URL the views can load; empty when it has none.
[[nodiscard]] QString iconSource(const AppInfo &app);

} // namespace ResultsRules
