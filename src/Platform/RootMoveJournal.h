// SPDX-License-Identifier: MIT
#pragma once

#include "FolderHandle.h"

#include <QByteArray>
#include <QString>
#include <optional>
#include <sys/types.h>

// What the privileged helper itself moved into a Trash, kept where only root can write
// (ROOT/Library/Application Support/Quenzo): the device, the inode and the original path of
// each item. The Trash and the history records belong to the user, whose programs can forge
// or swap anything there; this journal is the only thing a restore as root may believe. Beside
// it, a staging folder as private as the journal, on the same volume as the Trash, where an
// entry is held while its identity is checked, so that no one can swap it between the check
// and the move.
class RootMoveJournal
{
public:
    struct Identity
    {
        dev_t device = 0;
        ino_t inode = 0;
    };

    // The reason instead when the folders cannot be made private to `owner` (root, or the owner
    // of a fake Mac's root folder): not owned by it, writable by anyone else, linked.
    [[nodiscard]] static Result<RootMoveJournal> open(const FolderHandle &root, uid_t owner);

    [[nodiscard]] bool append(Identity identity, const QByteArray &originalPath) const;
    [[nodiscard]] bool contains(Identity identity, const QByteArray &originalPath) const;
    // Every line naming exactly this item and path.
    bool remove(Identity identity, const QByteArray &originalPath) const;

    [[nodiscard]] const FolderHandle &staging() const { return m_staging; }
    [[nodiscard]] uid_t owner() const { return m_owner; }

    // The folder under the root that holds the journal: nothing in it may be moved by request.
    static constexpr const char *kFolder = "Library/Application Support/Quenzo";

    RootMoveJournal(RootMoveJournal &&other) noexcept;
    RootMoveJournal &operator=(RootMoveJournal &&other) noexcept;
    RootMoveJournal(const RootMoveJournal &) = delete;
    RootMoveJournal &operator=(const RootMoveJournal &) = delete;
    ~RootMoveJournal();

private:
    RootMoveJournal() = default;
    [[nodiscard]] std::optional<QByteArray> readAll() const;

    FolderHandle m_folder;
    FolderHandle m_staging;
    int m_file = -1;
    uid_t m_owner = 0;
};
