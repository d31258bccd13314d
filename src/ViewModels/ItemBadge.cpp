// SPDX-License-Identifier: MIT
#include "ItemBadge.h"

#include "Platform/SystemLayout.h"

#include <array>

namespace ItemBadge {

namespace {
bool startsWithMacPath(const QString &path, const QString &macPrefix)
{
    return path.startsWith(SystemLayout::path(macPrefix));
}
} // namespace

bool isSystemProtected(const FileItem &item)
{
    return item.isProtected || SystemLayout::isInSystemFolder(item.path);
}

bool requiresAdmin(const QString &path)
{
    static const std::array<QString, 4> prefixes{
        QStringLiteral("/Library/LaunchDaemons"), QStringLiteral("/Library/LaunchAgents"),
        QStringLiteral("/Library/Application Support"), QStringLiteral("/Library/Preferences")};
    return std::any_of(prefixes.cbegin(), prefixes.cend(),
                       [&](const QString &prefix) { return startsWithMacPath(path, prefix); });
}

Kind kind(const FileItem &item)
{
    if (isSystemProtected(item))
        return Kind::partOfMacOS;
    if (item.note)
        return Kind::note;
    if (requiresAdmin(item.path))
        return Kind::requiresAdmin;
    if (item.isLowConfidence())
        return Kind::lowConfidence;
    return Kind::none;
}

QString text(const FileItem &item)
{
    switch (kind(item)) {
    case Kind::partOfMacOS:
        return QStringLiteral("• Part of macOS - Cannot delete");
    case Kind::note:
        return QStringLiteral("• ") + *item.note;
    case Kind::requiresAdmin:
        return QStringLiteral("• Requires admin");
    case Kind::lowConfidence:
        return QStringLiteral("• Low confidence");
    case Kind::none:
        break;
    }
    return {};
}

} // namespace ItemBadge
