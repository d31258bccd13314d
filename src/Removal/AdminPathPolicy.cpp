// SPDX-License-Identifier: MIT
#include "AdminPathPolicy.h"

#include "Core/PackageIdentifier.h"
#include "Platform/SystemLayout.h"

#include <QList>
#include <QMutex>

#include <memory>

namespace {

QString standardized(const QString &absolutePath);

struct AllowedRoot
{
    QString path;
    int minimumDepth;
};

QString homePath(const char *rest)
{
    return SystemLayout::home() + QLatin1String(rest);
}

QString macPath(const char *macRoot)
{
    return SystemLayout::path(QLatin1String(macRoot));
}

// The policy's tables for one layout. Built once per layout, on the first check after
// SystemLayout::set or reset: checks are many (every item of a plan, twice) and must not read
// the fake Mac's darwin-user-dirs file each time.
struct Tables
{
    quint64 layoutGeneration = 0;
    QStringList darwinDirectories;
    QStringList deniedRoots;
    QList<AllowedRoot> allowedRoots;
    QList<AllowedRoot> userFolderRoots; // the per-user cache and temporary folders
};

Tables buildTables()
{
    Tables tables;
    tables.layoutGeneration = SystemLayout::generation();
    tables.darwinDirectories = SystemLayout::darwinUserDirectories();
    tables.deniedRoots = {
        homePath("/Library/Keychains"),
        homePath("/Library/Mail"),
        homePath("/Library/Messages"),
        macPath("/Library/Application Support/Apple"),
        macPath("/Library/Application Support/com.apple.TCC"),
        // The privileged helper's own record of what it moved, and its staging folder.
        macPath("/Library/Application Support/Quenzo"),
        macPath("/Library/Preferences/SystemConfiguration"),
    };
    tables.allowedRoots = {
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
    for (const QString &directory : std::as_const(tables.darwinDirectories)) {
        if (directory.startsWith(QLatin1Char('/')) && standardized(directory) == directory &&
            directory != QLatin1String("/"))
            tables.userFolderRoots.append({directory, 1});
    }
    return tables;
}

// Shared by every thread that checks; a reader keeps its copy alive while it uses it.
std::shared_ptr<const Tables> currentTables()
{
    static QMutex mutex;
    static std::shared_ptr<const Tables> tables;
    const QMutexLocker lock(&mutex);
    if (!tables || tables->layoutGeneration != SystemLayout::generation())
        tables = std::make_shared<const Tables>(buildTables());
    return tables;
}

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

// Denied roots are matched ignoring case: Mac volumes usually are case-insensitive, and a
// refusal must not be dodged by writing "keychains".
bool isUnderDeniedRoot(const Tables &tables, const QString &path)
{
    for (const QString &root : tables.deniedRoots) {
        if (path.compare(root, Qt::CaseInsensitive) == 0 ||
            path.startsWith(root + QLatin1Char('/'), Qt::CaseInsensitive))
            return true;
    }
    return false;
}

// As root, confstr names root's own per-user folders, never the user's: the privileged helper
// leaves them out (the user's own rights cover the user's).
bool isUnderAllowedRoot(const Tables &tables, const QString &path, AdminPathPolicy::Scope scope)
{
    QList<AllowedRoot> allowed = tables.allowedRoots;
    if (scope == AdminPathPolicy::Scope::withUserFolders)
        allowed += tables.userFolderRoots;
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

} // namespace

bool AdminPathPolicy::isAllowed(const QString &path, Scope scope)
{
    if (!path.startsWith(QLatin1Char('/')))
        return false;
    if (hasForbiddenCharacter(path))
        return false;
    if (standardized(path) != path)
        return false;
    const std::shared_ptr<const Tables> tables = currentTables();
    if (isUnderDeniedRoot(*tables, path))
        return false;
    return isUnderAllowedRoot(*tables, path, scope);
}

bool AdminPathPolicy::isValidPackageID(const QString &id)
{
    return PackageIdentifier::isValid(id);
}

QString AdminPathPolicy::trashDirectory()
{
    return SystemLayout::trashDirectory();
}

QStringList AdminPathPolicy::userDarwinDirectories()
{
    return currentTables()->darwinDirectories;
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
