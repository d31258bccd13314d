// SPDX-License-Identifier: MIT
#pragma once

#include "Services/AuthorizationError.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

class PrivilegedShell;

// Everything the user's own rights cannot do, in one script run as root after one prompt:
// boot launch daemons out, forget installer receipts, move items into the user's Trash. Every
// path and identifier is vetted by AdminPathPolicy and single-quoted; what fails the vetting
// is left out silently. Nothing is ever deleted: the script only moves, with mv -n.
class AuthorizationService
{
public:
    struct Move
    {
        QString source;      // the item, an absolute path
        QString destination; // its new path directly inside the user's Trash
    };

    AuthorizationService();
    explicit AuthorizationService(std::shared_ptr<const PrivilegedShell> shell);

    // Nothing when the script ran or there was nothing to run. Blocks while the password
    // prompt is up: call it off the GUI thread.
    [[nodiscard]] std::optional<AuthorizationError>
    removeWithAdminPrivileges(const QList<Move> &moves, const QStringList &daemonPlists,
                              const QStringList &packageIDs) const;

    // The vetted commands in their fixed order: boot-outs, forgets, moves.
    [[nodiscard]] static QStringList commands(const QList<Move> &moves,
                                              const QStringList &daemonPlists,
                                              const QStringList &packageIDs);
    // The commands joined into one line that always exits 0.
    [[nodiscard]] static QString commandLine(const QStringList &commands);
    // "do shell script \"LINE\" with administrator privileges", LINE escaped for AppleScript.
    [[nodiscard]] static QString appleScriptSource(const QString &commandLine);
    // One single-quoted shell word holding exactly `text`.
    [[nodiscard]] static QString shellQuoted(const QString &text);
    // Whether `destination` names an item directly inside the user's Trash.
    [[nodiscard]] static bool isTrashDestination(const QString &destination);

private:
    std::shared_ptr<const PrivilegedShell> m_shell;
};
