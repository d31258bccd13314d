// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QStringList>
#include <algorithm>

namespace FolderListing {

// The names in a folder, hidden and system entries included, in plain text order so results
// never depend on the file system; nothing when the folder cannot be listed.
[[nodiscard]] inline QStringList names(const QString &folder)
{
    QStringList list = QDir(folder).entryList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Unsorted);
    std::sort(list.begin(), list.end());
    return list;
}

} // namespace FolderListing
