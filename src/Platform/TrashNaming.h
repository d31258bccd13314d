// SPDX-License-Identifier: MIT
#pragma once

#include <QSet>
#include <QString>

// The names items get in the Trash: the item's own name, else "Name 2.ext", "Name 3.ext", ...
// skipping names already taken on disk or promised to another item of the same run.
class TrashNaming
{
public:
    TrashNaming() = delete;

    // A free path directly inside `trashDirectory` for the item at `itemPath`; it is added to
    // `reserved`.
    [[nodiscard]] static QString freeDestination(const QString &trashDirectory,
                                                 const QString &itemPath, QSet<QString> &reserved);
    // Whether anything is at `path`; a symbolic link counts as itself, even when dangling.
    [[nodiscard]] static bool itemExists(const QString &path);
};
