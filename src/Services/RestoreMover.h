// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <memory>
#include <optional>

class PrivilegedShell;

// Moves items from the Trash back to where they were, never replacing anything at the original
// path and never through a link on the way. Paths are the file system's bytes.
class RestoreMover
{
public:
    struct Move
    {
        QByteArray trashPath;
        QByteArray originalPath;
    };
    enum class Outcome {
        restored,
        occupied, // something is at the original path now: the item stays in the Trash
        missing,  // the item is no longer in the Trash
        failed,
        canceled,
    };
    struct Result
    {
        Outcome outcome = Outcome::failed;
        QString message; // why, for failed
    };

    virtual ~RestoreMover() = default;
    // One result per move, in the same order.
    [[nodiscard]] virtual QList<Result> moveBack(const QList<Move> &moves) const = 0;

    // With the user's own rights: a rename that never replaces (renameat2 RENAME_NOREPLACE).
    [[nodiscard]] static std::shared_ptr<const RestoreMover> userRights();
    // Every move of the list in one privileged run, so one prompt covers the whole restore.
    [[nodiscard]] static std::shared_ptr<const RestoreMover>
    adminRights(std::shared_ptr<const PrivilegedShell> shell = {});

    // Why the original path cannot be reached without following a link, or nothing when it
    // can: every folder on the way must be a real folder (the platform's own /var, /tmp and
    // /etc links excepted, which are read as /private/...).
    [[nodiscard]] static std::optional<QString> linkOnTheWay(const QByteArray &originalPath);
};
