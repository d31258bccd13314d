// SPDX-License-Identifier: MIT
#pragma once

#include "Discovery/OrphanGroup.h"
#include "Models/AppInfo.h"
#include "Models/FileItem.h"

#include <QList>

// Turns the leftovers of deleted apps into what the uninstall flow works with: one app per
// group, without a bundle, so the removal quits no process and unregisters nothing for it.
namespace LeftoverSessions {

struct Entry
{
    AppInfo app;
    QList<FileItem> items;
};

// One entry per group that still has something to move, in the finder's order; each item keeps
// the finder's selection, and nothing that looks like an app bundle is taken over.
[[nodiscard]] QList<Entry> fromGroups(const QList<OrphanGroup> &groups);

} // namespace LeftoverSessions
