// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

class SystemLayout;

// The last check before a path or package identifier reaches a shell that runs as root.
// Purely textual: nothing is looked up on disk and no link is resolved. Mac roots lie under the
// layout's root, "~" roots under its home; the tables are built once, from the layout given.
class AdminPathPolicy
{
public:
    explicit AdminPathPolicy(const SystemLayout &layout);

    // `systemOnly` leaves out the per-user cache and temporary folders: the privileged helper's
    // scope.
    enum class Scope { withUserFolders, systemOnly };
    [[nodiscard]] bool isAllowed(const QString &path, Scope scope = Scope::withUserFolders) const;
    // PackageIdentifier::isValid, checked again at the last step before root.
    [[nodiscard]] static bool isValidPackageID(const QString &id);
    // Control and format characters (Cc, Cf), newlines, or text that is not valid UTF-16 (a lone
    // surrogate cannot reach a shell as the same name): text that never goes into the root line.
    [[nodiscard]] static bool hasForbiddenCharacter(const QString &text);

private:
    struct AllowedRoot
    {
        QString path;
        int minimumDepth;
    };
    [[nodiscard]] bool isUnderDeniedRoot(const QString &path) const;
    [[nodiscard]] bool isUnderAllowedRoot(const QString &path, Scope scope) const;

    QStringList m_deniedRoots;
    QList<AllowedRoot> m_allowedRoots;
    QList<AllowedRoot> m_userFolderRoots; // the per-user cache and temporary folders
};
