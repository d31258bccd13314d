// SPDX-License-Identifier: MIT
#pragma once

#include "Models/UninstallSession.h"
#include "Platform/SystemLayout.h"
#include "Removal/UninstallDependencies.h"

#include <QFuture>
#include <QList>
#include <QSharedPointer>
#include <functional>
#include <memory>

// Moves the selected items of a batch of sessions to the Trash: quits the apps, unloads their
// agents, moves what the user may move, asks once for administrator rights for the rest of the
// whole batch, and writes each session's counters and summary. One background task; every
// session read and write happens on the GUI thread, which never waits on the task.
class UninstallService
{
public:
    using Dependencies = UninstallDependencies;

    // What the caller leaves out of `dependencies` is the real thing, on the layout.
    explicit UninstallService(SystemLayout layout, Dependencies dependencies = {});
    virtual ~UninstallService() = default;

    // Finishes when every session is completed. Never fails as a whole; call it on the GUI
    // thread and never wait for the result there.
    [[nodiscard]] virtual QFuture<void>
    uninstall(const QList<QSharedPointer<UninstallSession>> &sessions);

private:
    SystemLayout m_layout;
    Dependencies m_dependencies;
};
