// SPDX-License-Identifier: MIT
#include "TrashMover.h"

#include "RenamingTrashMover.h"
#include "SystemLayout.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstring>
#include <sys/stat.h>

#if defined(Q_OS_MACOS)
#include "mac/FileManagerTrash.h"
#endif

std::shared_ptr<const TrashMover> TrashMover::system(const SystemLayout &layout)
{
#if defined(Q_OS_MACOS)
    if (layout.usesNativeFileServices())
        return std::make_shared<const FileManagerTrash>();
#endif
    return std::make_shared<const RenamingTrashMover>(layout);
}

std::optional<QString> TrashMover::ensureTrashFolder(const SystemLayout &layout)
{
    const QString trash = layout.trashDirectory();
    if (QDir(trash).exists())
        return std::nullopt;
    if (::mkdir(QFile::encodeName(trash).constData(), 0700) == 0 || errno == EEXIST)
        return std::nullopt;
    return QString::fromLocal8Bit(std::strerror(errno));
}
