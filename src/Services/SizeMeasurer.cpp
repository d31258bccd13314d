// SPDX-License-Identifier: MIT
#include "SizeMeasurer.h"

#include <QDirIterator>
#include <QFile>

#include <sys/stat.h>

namespace {
std::optional<struct stat> lstatOf(const QString &path)
{
    struct stat info
    {};
    if (::lstat(QFile::encodeName(path).constData(), &info) != 0)
        return std::nullopt;
    return info;
}

qint64 sumBelow(const QString &folder)
{
    qint64 total = 0;
    // No FollowSymlinks: a link is listed as itself and never entered.
    QDirIterator it(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const auto info = lstatOf(it.next());
        if (info && (S_ISREG(info->st_mode) || S_ISLNK(info->st_mode)))
            total += qint64(info->st_size);
    }
    return total;
}
} // namespace

qint64 SizeMeasurer::itemSize(const QString &path)
{
    const auto info = lstatOf(path);
    if (!info)
        return 0;
    if (S_ISDIR(info->st_mode)) {
        if (const qint64 below = sumBelow(path); below > 0)
            return below;
    }
    return qint64(info->st_size);
}
