// SPDX-License-Identifier: MIT
#pragma once

#include "Platform/HelperBatch.h"
#include "Platform/LinkProofMove.h"
#include "Platform/RootMoveJournal.h"
#include "Platform/SystemLayout.h"
#include "Removal/AdminPathPolicy.h"

#include <QByteArray>
#include <QList>
#include <optional>
#include <sys/types.h>

class ToolRunner;

// What the privileged helper does with a batch, as root: every command is checked again here
// (the batch comes from a process the user's own programs can reach), then run in the given
// order, one result per command.
class PrivilegedHelper
{
public:
    // `user`: the owner of the layout's home and Trash.
    PrivilegedHelper(SystemLayout layout, uid_t user, const ToolRunner &tools);

    [[nodiscard]] QList<HelperRecord> run(const QList<HelperRecord> &commands) const;

    // Whether a move may be made as root: an allowed item into the Trash, or an item directly
    // in the Trash back to an allowed place.
    [[nodiscard]] static bool isAllowedMove(const AdminPathPolicy &policy, const QString &source,
                                            const QString &destination, const QString &trash);

private:
    [[nodiscard]] HelperRecord bootOut(const QByteArray &plist) const;
    [[nodiscard]] HelperRecord forget(const QByteArray &packageID) const;
    [[nodiscard]] HelperRecord move(const QByteArray &source, const QByteArray &destination) const;
    [[nodiscard]] HelperRecord moveToTrash(const QByteArray &source) const;
    [[nodiscard]] HelperRecord restore(const QByteArray &source,
                                       const QByteArray &destination) const;
    [[nodiscard]] HelperRecord runTool(const char *macPath, const QStringList &arguments,
                                       const QByteArray &item) const;

    SystemLayout m_layout;
    AdminPathPolicy m_policy;
    const ToolRunner &m_tools;
    Result<LinkProofMove> m_mover;
    Result<RootMoveJournal> m_journal;
};
