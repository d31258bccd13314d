// SPDX-License-Identifier: MIT
#include "LeftoverSessions.h"

namespace LeftoverSessions {

QList<Entry> fromGroups(const QList<OrphanGroup> &groups)
{
    QList<Entry> entries;
    for (const OrphanGroup &group : groups) {
        Entry entry;
        // The identifier is only shown; the empty bundle path is what keeps the removal from
        // quitting processes.
        entry.app.name = group.name;
        entry.app.bundleIdentifier = group.identifier.isEmpty()
                                         ? QStringLiteral("Leftovers of a deleted app")
                                         : group.identifier;
        for (const FileItem &item : group.items) {
            // An application item would be unregistered from the system on removal.
            if (item.category != FileCategory::application)
                entry.items.append(item);
        }
        if (!entry.items.isEmpty())
            entries.append(entry);
    }
    return entries;
}

} // namespace LeftoverSessions
