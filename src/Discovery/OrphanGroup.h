// SPDX-License-Identifier: MIT
#pragma once

#include "Models/FileItem.h"

#include <QList>
#include <QString>

// The leftovers of one app that is no longer installed, as far as names tell. Each item's note
// says why it is in the group; only items with strong evidence start selected.
struct OrphanGroup
{
    QString name;       // the app it most likely belonged to ("Writer")
    QString identifier; // its identifier family ("com.acme.writer"); empty for a vendor's folders
    QList<FileItem> items;

    [[nodiscard]] qint64 totalSize() const
    {
        qint64 total = 0;
        for (const FileItem &item : items)
            total += item.size;
        return total;
    }
};
