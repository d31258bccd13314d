// SPDX-License-Identifier: MIT
#pragma once

#include "TrashMover.h"

// A link-proof rename (LinkProofMove) into HOME/.Trash of SystemLayout under a free name, never
// replacing anything and never copying.
class RenamingTrashMover : public TrashMover
{
public:
    bool moveToTrash(const QString &path, QString *error,
                     QString *trashPath = nullptr) const override;
};
