// SPDX-License-Identifier: MIT
#pragma once

#include "FolderHandle.h"

#include <QByteArray>
#include <QString>
#include <optional>
#include <sys/types.h>

// The one way Quenzo moves an item, with the user's rights and as root alike. The root, the
// user's home and their Trash are opened once, link-proof, and the home and the Trash must be
// folders owned by the user. Each move walks from the root (or from the home for the user's own
// items) down to the item's folder without following links, then renames the entry itself (a
// link is moved as a link) with a rename that never replaces and never follows the destination.
// The walk and the rename happen at move time, so a link planted after the scan gains nothing.
class LinkProofMove
{
public:
    struct Outcome
    {
        bool moved = false;
        QByteArray destination; // the final path, when moved
        QString error;          // why not, otherwise
        bool missing = false;   // the item was not there at all
        dev_t device = 0;       // the moved entry's identity, when moved
        ino_t inode = 0;
    };

    // The reason instead when a folder is missing or linked, or the home or the Trash is
    // not a folder owned by `user`.
    [[nodiscard]] static Result<LinkProofMove> open(const QByteArray &root, const QByteArray &home,
                                                    uid_t user);

    // Into the Trash under the item's own name, else "Name 2.ext", "Name 3.ext"...
    [[nodiscard]] Outcome moveToTrash(const QByteArray &source) const;
    // To exactly `destination`, which must not exist; its folder is walked like the source's.
    [[nodiscard]] Outcome move(const QByteArray &source, const QByteArray &destination) const;

    // The same moves with one end an open folder the caller reached itself (a staging folder):
    // `source` into `folder` as exactly `name`; `name` in `folder` to exactly `destination`;
    // `name` in `folder` into the Trash as `wanted` or its next free name.
    [[nodiscard]] Outcome moveInto(const QByteArray &source, const FolderHandle &folder,
                                   const QByteArray &name) const;
    [[nodiscard]] Outcome moveOut(const FolderHandle &folder, const QByteArray &name,
                                  const QByteArray &destination) const;
    [[nodiscard]] Outcome moveOutToTrash(const FolderHandle &folder, const QByteArray &name,
                                         const QByteArray &wanted) const;

    [[nodiscard]] const FolderHandle &root() const { return m_root; }

    // Whether `path`, reached the same way, is a regular file (not a link, not a FIFO).
    [[nodiscard]] bool isPlainFile(const QByteArray &path) const;
    // Whether `path`, reached the same way, is a regular file of root's (or of the owner of the
    // root folder) with no other link, that no one else may write: a file only root controls.
    [[nodiscard]] bool isSystemOnlyFile(const QByteArray &path) const;

    // The name an item takes in a folder where its own name is taken: n >= 2.
    [[nodiscard]] static QByteArray numberedName(const QByteArray &name, int n);

private:
    struct Entry
    {
        FolderHandle folder;
        QByteArray name;
    };
    [[nodiscard]] Result<Entry> entryOf(const QByteArray &path) const;
    [[nodiscard]] Outcome rename(int sourceFolder, const QByteArray &sourceName,
                                 const FolderHandle &folder, const QByteArray &folderPath,
                                 const QByteArray &name, bool pickFreeName) const;

    QByteArray m_rootPath;
    QByteArray m_homePath;
    QByteArray m_trashPath;
    FolderHandle m_root;
    FolderHandle m_home;
    FolderHandle m_trash;
};
