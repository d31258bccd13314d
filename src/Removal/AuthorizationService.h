// SPDX-License-Identifier: MIT
#pragma once

#include "Platform/HelperBatch.h"
#include "Platform/SystemLayout.h"
#include "Removal/AdminPathPolicy.h"
#include "Removal/AuthorizationError.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

class PrivilegedShell;

// Everything the user's own rights cannot do, in one run of Quenzo's privileged helper after
// one prompt: boot launch daemons out, forget installer receipts, move items into the user's
// Trash. Only what AdminPathPolicy allows is sent (the helper checks it again); the helper is
// run only when TrustedProgram accepts it. Nothing is ever deleted.
class AuthorizationService
{
public:
    struct Move
    {
        QString source;      // the item, an absolute path
        QString destination; // its wished-for path directly inside the user's Trash
    };
    // What the helper said about each command, keyed by its item's bytes: the source path of
    // a move; the plist path of a boot-out or the identifier of a forgotten package.
    struct Report
    {
        std::optional<AuthorizationError> error; // the helper did not run through
        QHash<QByteArray, HelperRecord> moves;
        QHash<QByteArray, HelperRecord> others;
    };

    // `shell`: the system's privileged shell when none is given; `helper`: the helper
    // executable, by default the one beside this program.
    explicit AuthorizationService(SystemLayout layout,
                                  std::shared_ptr<const PrivilegedShell> shell = {},
                                  QString helper = defaultHelper());

    // No prompt when nothing passes the policy. Blocks while the password prompt is up: call
    // it off the GUI thread.
    [[nodiscard]] Report removeWithAdminPrivileges(const QList<Move> &moves,
                                                   const QStringList &daemonPlists,
                                                   const QStringList &packageIDs) const;

    // The vetted commands in their fixed order: boot-outs, forgets, moves.
    [[nodiscard]] QList<HelperRecord> commands(const QList<Move> &moves,
                                               const QStringList &daemonPlists,
                                               const QStringList &packageIDs) const;
    // The batch's SHA-256 in lowercase hex, as the helper checks it.
    [[nodiscard]] static QByteArray batchDigest(const QByteArray &batch);
    // quenzo-privileged-helper in the folder of the running executable.
    [[nodiscard]] static QString defaultHelper();

private:
    SystemLayout m_layout;
    AdminPathPolicy m_policy;
    std::shared_ptr<const PrivilegedShell> m_shell;
    QString m_helper;
};
