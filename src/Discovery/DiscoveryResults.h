// SPDX-License-Identifier: MIT
#pragma once

#include "Discovery/Fingerprint.h"
#include "Discovery/Match.h"
#include "Models/FileItem.h"

class SystemLayout;

#include <QList>
#include <QSet>

// The items of one discovery in the order they were accepted. An item is refused when its path
// was taken already or lies inside a path taken before it; one that contains earlier items is
// still accepted and they stay.
class DiscoveryResults
{
public:
    // True when the item was accepted.
    bool add(FileItem item);
    [[nodiscard]] const QList<FileItem> &items() const { return m_items; }
    [[nodiscard]] QList<FileItem> takeItems() { return std::move(m_items); }

    // An item for a found path: measured, with the selection, confidence and note of its match.
    [[nodiscard]] static FileItem makeItem(const QString &path, FileCategory category,
                                           const Match &match, const Fingerprint &fingerprint);

private:
    QList<FileItem> m_items;
    QSet<QString> m_paths;
};

// Fills in where each item lies, as the views show it: its shown path, whether the system
// protects it and whether only an administrator may change its folder.
void describePlaces(QList<FileItem> &items, const SystemLayout &layout);
