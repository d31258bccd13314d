// SPDX-License-Identifier: MIT
#pragma once

#include "Core/Result.h"

#include <QString>

class SystemLayout;
#include <memory>

// Moves one item into the user's Trash with the user's own rights. Call it on the GUI thread.
// Tests pass a fake that fails.
class TrashMover
{
public:
    virtual ~TrashMover() = default;

    // The item's new path, or why it could not be moved.
    [[nodiscard]] virtual Result<QString> moveToTrash(const QString &path) const = 0;
};

// Makes the user's Trash folder (mode 0700) when it is missing, with the user's own rights, so
// that a move into it as root never has to create it. The reason when that fails.
[[nodiscard]] std::optional<QString> ensureTrashFolder(const SystemLayout &layout);
