// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

// The last check before a path or package identifier reaches a shell that runs as root.
// Purely textual: nothing is looked up on disk and no link is resolved. Mac roots lie under
// SystemLayout::root(), "~" roots under SystemLayout::home(). The tables are built once per
// layout, at the first check after SystemLayout::set or reset, and kept until the layout changes
// again; a fake Mac's darwin-user-dirs file is read then, so whoever rewrites it sets the layout
// again.
class AdminPathPolicy
{
public:
    AdminPathPolicy() = delete;

    // `systemOnly` leaves out the per-user cache and temporary folders: the privileged helper's
    // scope.
    enum class Scope { withUserFolders, systemOnly };
    [[nodiscard]] static bool isAllowed(const QString &path, Scope scope = Scope::withUserFolders);
    // PackageIdentifier::isValid, checked again at the last step before root.
    [[nodiscard]] static bool isValidPackageID(const QString &id);
    // Control and format characters (Cc, Cf), newlines, or text that is not valid UTF-16 (a lone
    // surrogate cannot reach a shell as the same name): text that never goes into the root line.
    [[nodiscard]] static bool hasForbiddenCharacter(const QString &text);
    // The user's Trash folder: HOME/.Trash.
    [[nodiscard]] static QString trashDirectory();
    // The per-user cache and temporary folders, cache first, without their trailing "/", as the
    // tables hold them.
    [[nodiscard]] static QStringList userDarwinDirectories();
};
