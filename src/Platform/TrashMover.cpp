// SPDX-License-Identifier: MIT
#include "TrashMover.h"

#include "SystemLayout.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstring>
#include <sys/stat.h>

std::optional<QString> ensureTrashFolder(const SystemLayout &layout)
{
    const QString trash = layout.trashDirectory();
    if (QDir(trash).exists())
        return std::nullopt;
    if (::mkdir(QFile::encodeName(trash).constData(), 0700) == 0 || errno == EEXIST)
        return std::nullopt;
    return QString::fromLocal8Bit(std::strerror(errno));
}
