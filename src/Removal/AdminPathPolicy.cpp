// SPDX-License-Identifier: MIT
#include "AdminPathPolicy.h"

#include "Core/PackageIdentifier.h"
#include "Platform/SystemLayout.h"

namespace {

bool isNewline(char32_t c)
{
    return (c >= 0x0A && c <= 0x0D) || c == 0x85 || c == 0x2028 || c == 0x2029;
}

// "." and ".." resolved textually, empty components (repeated or trailing "/") dropped. Case
// and links are left as they are.
QString standardized(const QString &absolutePath)
{
    QStringList components;
    const QStringList pieces = absolutePath.split(QLatin1Char('/'));
    for (const QString &piece : pieces) {
        if (piece.isEmpty() || piece == QLatin1String("."))
            continue;
        if (piece == QLatin1String("..")) {
            if (!components.isEmpty())
                components.removeLast();
            continue;
        }
        components.append(piece);
    }
    return QLatin1Char('/') + components.join(QLatin1Char('/'));
}

} // namespace

AdminPathPolicy::AdminPathPolicy(const SystemLayout &layout)
{
    const auto homePath = [&](const char *rest) { return layout.home() + QLatin1String(rest); };
    const auto macPath = [&](const char *macRoot) { return layout.path(QLatin1String(macRoot)); };
    m_deniedRoots = {
        homePath("/Library/Keychains"),
        homePath("/Library/Mail"),
        homePath("/Library/Messages"),
        macPath("/Library/Application Support/Apple"),
        macPath("/Library/Application Support/com.apple.TCC"),
        // The privileged helper's own record of what it moved, and its staging folder.
        macPath("/Library/Application Support/Quenzo"),
        macPath("/Library/Preferences/SystemConfiguration"),
    };
    m_allowedRoots = {
        {macPath("/Applications"), 1},
        {homePath("/Applications"), 1},
        {homePath("/Library"), 2},
        {macPath("/Library/Application Support"), 1},
        {macPath("/Library/Caches"), 1},
        {macPath("/Library/Preferences"), 1},
        {macPath("/Library/Logs"), 1},
        {macPath("/Library/LaunchAgents"), 1},
        {macPath("/Library/LaunchDaemons"), 1},
        {macPath("/Library/PrivilegedHelperTools"), 1},
        {macPath("/Library/Internet Plug-Ins"), 1},
        {macPath("/Library/PreferencePanes"), 1},
        {macPath("/Library/Screen Savers"), 1},
    };
    // A malformed entry (empty once its "/" is gone, relative, not clean) would widen the
    // policy to far more than one folder, so it is left out.
    for (const QString &directory : layout.darwinUserDirectories()) {
        if (directory.startsWith(QLatin1Char('/')) && standardized(directory) == directory &&
            directory != QLatin1String("/"))
            m_userFolderRoots.append({directory, 1});
    }
}

// Denied roots are matched ignoring case: Mac volumes usually are case-insensitive, and a
// refusal must not be dodged by writing "keychains".
bool AdminPathPolicy::isUnderDeniedRoot(const QString &path) const
{
    for (const QString &root : m_deniedRoots) {
        if (path.compare(root, Qt::CaseInsensitive) == 0 ||
            path.startsWith(root + QLatin1Char('/'), Qt::CaseInsensitive))
            return true;
    }
    return false;
}

// As root, confstr names root's own per-user folders, never the user's: the privileged helper
// leaves them out (the user's own rights cover the user's).
bool AdminPathPolicy::isUnderAllowedRoot(const QString &path, Scope scope) const
{
    QList<AllowedRoot> allowed = m_allowedRoots;
    if (scope == Scope::withUserFolders)
        allowed += m_userFolderRoots;
    for (const AllowedRoot &root : std::as_const(allowed)) {
        const QString prefix = root.path + QLatin1Char('/');
        if (!path.startsWith(prefix))
            continue;
        const qsizetype depth =
            path.mid(prefix.size()).split(QLatin1Char('/'), Qt::SkipEmptyParts).size();
        if (depth >= root.minimumDepth)
            return true;
    }
    return false;
}

bool AdminPathPolicy::isAllowed(const QString &path, Scope scope) const
{
    if (!path.startsWith(QLatin1Char('/')))
        return false;
    if (hasForbiddenCharacter(path))
        return false;
    if (standardized(path) != path)
        return false;
    if (isUnderDeniedRoot(path))
        return false;
    return isUnderAllowedRoot(path, scope);
}

bool AdminPathPolicy::isValidPackageID(const QString &id)
{
    return PackageIdentifier::isValid(id);
}

bool AdminPathPolicy::hasForbiddenCharacter(const QString &text)
{
    if (!text.isValidUtf16())
        return true;
    const QList<uint> codePoints = text.toUcs4();
    for (const uint c : codePoints) {
        const QChar::Category category = QChar::category(char32_t(c));
        if (category == QChar::Other_Control || category == QChar::Other_Format ||
            isNewline(char32_t(c)))
            return true;
    }
    return false;
}
