// SPDX-License-Identifier: MIT
#pragma once
#include "Platform/LogCategories.h"

#include <QFile>
#include <QStringList>
#include <algorithm>

#include <dirent.h>

namespace FolderListing {

// The names in a folder, hidden and system entries included, in plain text order so results
// never depend on the file system; nothing when the folder cannot be listed. Read straight
// from the directory: nothing is stat'ed, as callers look at names first.
[[nodiscard]] inline QStringList names(const QString &folder)
{
    QStringList list;
    DIR *dir = ::opendir(QFile::encodeName(folder).constData());
    if (!dir) {
        // A missing folder is the usual case for most places discovery looks at.
        if (errno != ENOENT)
            qCDebug(lcDiscovery) << "cannot list" << folder << qt_error_string(errno);
        return list;
    }
    while (const dirent *entry = ::readdir(dir)) {
        const char *name = entry->d_name;
        if (name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0')))
            continue;
        list.append(QFile::decodeName(name));
    }
    ::closedir(dir);
    std::sort(list.begin(), list.end());
    return list;
}

} // namespace FolderListing
