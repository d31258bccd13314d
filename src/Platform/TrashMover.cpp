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

std::shared_ptr<const TrashMover> TrashMover::system()
{
#if defined(Q_OS_MACOS)
    if (SystemLayout::usesNativeFileServices())
        return std::make_shared<const FileManagerTrash>();
#endif
    return std::make_shared<const RenamingTrashMover>();
}

bool TrashMover::ensureTrashFolder(QString *error)
{
    const QString trash = SystemLayout::trashDirectory();
    if (QDir(trash).exists())
        return true;
    if (::mkdir(QFile::encodeName(trash).constData(), 0700) == 0 || errno == EEXIST)
        return true;
    *error = QString::fromLocal8Bit(std::strerror(errno));
    return false;
}
