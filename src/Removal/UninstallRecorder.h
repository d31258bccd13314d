// SPDX-License-Identifier: MIT
#pragma once

#include "Removal/UninstallPlan.h"

#include <QList>
#include <QString>

// Told by an uninstall what it is about to move and what it moved, so the run can be put back
// later, also after it was interrupted. Called on the uninstall's background task.
class UninstallRecorder
{
public:
    virtual ~UninstallRecorder() = default;

    // Before the first move: every item of every plan that may move or be forgotten.
    virtual void planned(const QList<UninstallPlan> &plans) = 0;
    // Right after one item went into the Trash; `withAdminRights` when root moved it.
    virtual void moved(const QString &originalPath, const QString &trashPath,
                       bool withAdminRights) = 0;
};
