// SPDX-License-Identifier: MIT
#include "ItemBadge.h"

namespace ItemBadge {

Kind kind(const FileItem &item)
{
    if (item.isProtected)
        return Kind::partOfMacOS;
    if (item.note)
        return Kind::note;
    if (item.requiresAdmin)
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
