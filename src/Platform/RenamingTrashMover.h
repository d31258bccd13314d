// SPDX-License-Identifier: MIT
#pragma once

#include "SystemLayout.h"
#include "TrashMover.h"

// A link-proof rename (LinkProofMove) into the layout's HOME/.Trash under a free name, never
// replacing anything and never copying.
class RenamingTrashMover : public TrashMover
{
public:
    explicit RenamingTrashMover(SystemLayout layout) : m_layout(std::move(layout)) {}

    [[nodiscard]] Result<QString> moveToTrash(const QString &path) const override;

private:
    SystemLayout m_layout;
};
