// SPDX-License-Identifier: MIT
#include "DiscoveryResults.h"

#include "Discovery/MatchRules.h"
#include "Discovery/SizeMeasurer.h"
#include "Platform/SystemLayout.h"

#include <QDir>
#include <QFileInfo>

bool DiscoveryResults::add(FileItem item)
{
    const QString path = QDir::cleanPath(item.path);
    if (m_paths.contains(path))
        return false;
    for (qsizetype slash = path.lastIndexOf(QLatin1Char('/')); slash > 0;
         slash = path.lastIndexOf(QLatin1Char('/'), slash - 1)) {
        if (m_paths.contains(path.left(slash)))
            return false;
    }
    m_paths.insert(path);
    item.isWritable = QFileInfo(item.path).isWritable();
    m_items.append(std::move(item));
    return true;
}

FileItem DiscoveryResults::makeItem(const QString &path, FileCategory category, const Match &match,
                                    const Fingerprint &fingerprint)
{
    const MatchVerdict verdict = MatchRules::verdict(match, fingerprint);
    FileItem item;
    item.path = path;
    item.category = category;
    item.size = SizeMeasurer::itemSize(path);
    item.isSelected = verdict.isSelected;
    item.confidence = verdict.confidence;
    item.note = verdict.note;
    item.reason = match.reason;
    return item;
}

void describePlaces(QList<FileItem> &items, const SystemLayout &layout)
{
    for (FileItem &item : items) {
        item.shownPath = layout.displayPath(item.path);
        item.isProtected = item.isProtected || layout.isInSystemFolder(item.path);
        item.requiresAdmin = layout.isInAdminOnlyFolder(item.path);
    }
}
