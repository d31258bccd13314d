// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Moves one item into the user's Trash with the user's own rights. Linux: a rename into
// HOME/.Trash under a free name, never replacing anything and never copying. Call it on the
// GUI thread. Tests pass a fake that fails.
class TrashMover
{
public:
    virtual ~TrashMover() = default;

    // False, with the reason in `error`, when the item could not be moved.
    virtual bool moveToTrash(const QString &path, QString *error) const;
};
