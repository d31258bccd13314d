// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <memory>
#include <optional>

class AuthorizationService;
class SystemLayout;

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

    // With the user's own rights: the uninstall's link-proof move, which never replaces.
    [[nodiscard]] static std::shared_ptr<const RestoreMover> userRights(const SystemLayout &layout);
    // Every move of the list in one run of the privileged helper, so one prompt covers the
    // whole restore.
    [[nodiscard]] static std::shared_ptr<const RestoreMover>
    adminRights(std::shared_ptr<const AuthorizationService> authorization);
};
