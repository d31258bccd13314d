// SPDX-License-Identifier: MIT
#pragma once

#include "Models/UninstallSession.h"

#include <QFuture>
#include <QList>
#include <QPointer>
#include <QSharedPointer>

// Moves the selected items of a batch of sessions to the Trash. One background task; every
// session write happens on the GUI thread.
class UninstallService
{
public:
    UninstallService();
    virtual ~UninstallService() = default;

    // Finishes when every session is completed. Never fails as a whole.
    [[nodiscard]] virtual QFuture<void>
    uninstall(const QList<QSharedPointer<UninstallSession>> &sessions);
};
