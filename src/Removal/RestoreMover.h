// SPDX-License-Identifier: MIT
#pragma once

#include "Platform/SystemLayout.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <memory>
#include <optional>

class AuthorizationService;

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

    // Every move of the list in one run of the privileged helper, so one prompt covers the
    // whole restore.
    [[nodiscard]] static std::shared_ptr<const RestoreMover>
    adminRights(std::shared_ptr<const AuthorizationService> authorization);
};

// With the user's own rights: the uninstall's link-proof move, which never replaces.
class UserRestoreMover : public RestoreMover
{
public:
    explicit UserRestoreMover(SystemLayout layout) : m_layout(std::move(layout)) {}

    [[nodiscard]] QList<Result> moveBack(const QList<Move> &moves) const override;

private:
    SystemLayout m_layout;
};
