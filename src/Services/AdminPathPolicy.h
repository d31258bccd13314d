// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

// The last check before a path or package identifier reaches a shell that runs as root.
// Purely textual: nothing is looked up on disk and no link is resolved. Mac roots lie under
// SystemLayout::root(), "~" roots under SystemLayout::home(); tables are built on every call.
class AdminPathPolicy
{
public:
    AdminPathPolicy() = delete;

    // `systemOnly` leaves out the per-user cache and temporary folders: the privileged helper's
    // scope.
    enum class Scope { withUserFolders, systemOnly };
    [[nodiscard]] static bool isAllowed(const QString &path, Scope scope = Scope::withUserFolders);
    [[nodiscard]] static bool isValidPackageID(const QString &id);
    // Control and format characters (Cc, Cf), newlines, or text that is not valid UTF-16 (a lone
    // surrogate cannot reach a shell as the same name): text that never goes into the root line.
    [[nodiscard]] static bool hasForbiddenCharacter(const QString &text);
    // The user's Trash folder: HOME/.Trash.
    [[nodiscard]] static QString trashDirectory();
    // The per-user cache and temporary folders, cache first, without their trailing "/".
    [[nodiscard]] static QStringList userDarwinDirectories();
};
