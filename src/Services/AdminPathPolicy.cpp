// SPDX-License-Identifier: MIT
#include "AdminPathPolicy.h"

#include "Platform/SystemLayout.h"

#include <QList>

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

QStringList deniedRoots()
{
    return {
        homePath("/Library/Keychains"),
        homePath("/Library/Mail"),
        homePath("/Library/Messages"),
        macPath("/Library/Application Support/Apple"),
        macPath("/Library/Application Support/com.apple.TCC"),
        // The privileged helper's own record of what it moved, and its staging folder.
        macPath("/Library/Application Support/Quenzo"),
        macPath("/Library/Preferences/SystemConfiguration"),
    };
}

QList<AllowedRoot> allowedRoots(AdminPathPolicy::Scope scope)
{
    QList<AllowedRoot> roots{
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
    // As root, confstr names root's own folders, never the user's: those the user's own rights
    // cover anyway.
    if (scope == AdminPathPolicy::Scope::systemOnly)
        return roots;
    // A malformed entry (empty once its "/" is gone, relative, not clean) would widen the
    // policy to far more than one folder, so it is left out.
    for (const QString &directory : AdminPathPolicy::userDarwinDirectories()) {
        if (directory.startsWith(QLatin1Char('/')) && standardized(directory) == directory &&
            directory != QLatin1String("/"))
            roots.append({directory, 1});
    }
    return roots;
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
bool isUnderDeniedRoot(const QString &path)
{
    const QStringList denied = deniedRoots();
    for (const QString &root : denied) {
        if (path.compare(root, Qt::CaseInsensitive) == 0 ||
            path.startsWith(root + QLatin1Char('/'), Qt::CaseInsensitive))
            return true;
    }
    return false;
}

bool isUnderAllowedRoot(const QString &path, AdminPathPolicy::Scope scope)
{
    const QList<AllowedRoot> allowed = allowedRoots(scope);
    for (const AllowedRoot &root : allowed) {
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

bool isAlphanumeric(char32_t c)
{
    return QChar::isLetterOrNumber(c) || QChar::isMark(c);
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
    if (isUnderDeniedRoot(path))
        return false;
    return isUnderAllowedRoot(path, scope);
}

bool AdminPathPolicy::isValidPackageID(const QString &id)
{
    // Operating-system receipts are never forgotten, whatever the case of the prefix.
    if (id.startsWith(QLatin1String("com.apple.pkg."), Qt::CaseInsensitive))
        return false;
    if (id.isEmpty() || !id.isValidUtf16())
        return false;
    const QList<uint> codePoints = id.toUcs4();
    if (!isAlphanumeric(char32_t(codePoints.first())))
        return false;
    for (const uint c : codePoints) {
        if (!isAlphanumeric(char32_t(c)) && c != u'.' && c != u'_' && c != u'-')
            return false;
    }
    return true;
}

QString AdminPathPolicy::trashDirectory()
{
    return SystemLayout::trashDirectory();
}

QStringList AdminPathPolicy::userDarwinDirectories()
{
    QStringList directories = SystemLayout::darwinUserDirectories();
    for (QString &directory : directories) {
        if (directory.endsWith(QLatin1Char('/')))
            directory.chop(1);
    }
    return directories;
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
