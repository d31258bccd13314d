// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class SystemLayout;
#include <memory>

// Moves one item into the user's Trash with the user's own rights. Call it on the GUI thread.
// Tests pass a fake that fails.
class TrashMover
{
public:
    virtual ~TrashMover() = default;

    // False, with the reason in `error`, when the item could not be moved. On success the
    // item's new path goes to `trashPath` when one is given.
    virtual bool moveToTrash(const QString &path, QString *error,
                             QString *trashPath = nullptr) const = 0;

    // Makes the user's Trash folder (mode 0700) when it is missing, with the user's own rights,
    // so that a move into it as root never has to create it. False, with the reason, on failure.
    [[nodiscard]] static bool ensureTrashFolder(const SystemLayout &layout, QString *error);

    // NSFileManager on a real Mac; a rename into HOME/.Trash elsewhere and on a fake Mac.
    [[nodiscard]] static std::shared_ptr<const TrashMover> system(const SystemLayout &layout);
};
