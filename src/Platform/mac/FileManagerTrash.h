// SPDX-License-Identifier: MIT
#pragma once

#include "Platform/TrashMover.h"

#include <QString>

// macOS: the user's Trash through NSFileManager (FileManagerTrash.mm). The system picks the Trash
// of the item's volume and a free name there, and the Finder can put the item back.
class FileManagerTrash : public TrashMover
{
public:
    [[nodiscard]] Result<QString> moveToTrash(const QString &path) const override;
};
