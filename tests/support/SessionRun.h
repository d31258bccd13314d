// SPDX-License-Identifier: MIT
#pragma once

#include "Models/FileItem.h"
#include "Models/UninstallSession.h"

#include <QList>
#include <QSharedPointer>
#include <QStringList>

class UninstallService;

// Building sessions ready to uninstall, running them to the end and reading their log.
namespace SessionRun {

[[nodiscard]] FileItem item(const QString &path, FileCategory category = FileCategory::caches,
                            qint64 size = 10);
// A session of `app` holding `items`, in the ready state.
[[nodiscard]] QSharedPointer<UninstallSession> readySession(const AppInfo &app,
                                                            const QList<FileItem> &items);
// Starts the uninstall and waits for it; false (after a failed check) when it does not end or
// a session is not completed.
[[nodiscard]] bool toCompletion(UninstallService &service,
                                const QList<QSharedPointer<UninstallSession>> &sessions);
[[nodiscard]] QStringList messages(const UninstallSession &session);

} // namespace SessionRun
