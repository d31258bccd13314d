// SPDX-License-Identifier: MIT
#include "RenamingTrashMover.h"

#include "Platform/SystemLayout.h"
#include "Platform/TrashNaming.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>

namespace {
// rename(2) that refuses to replace an existing item; EEXIST when the name is taken.
int renameWithoutReplacing(const QString &source, const QString &destination)
{
    const QByteArray from = QFile::encodeName(source);
    const QByteArray to = QFile::encodeName(destination);
#if defined(RENAME_NOREPLACE)
    const int result =
        ::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE);
    if (result == 0 || errno != EINVAL)
        return result == 0 ? 0 : errno;
#endif
    // A file system without the flag: check, then rename (the gap is the caller's own folder).
    if (TrashNaming::itemExists(destination))
        return EEXIST;
    return ::rename(from.constData(), to.constData()) == 0 ? 0 : errno;
}
} // namespace

bool RenamingTrashMover::moveToTrash(const QString &path, QString *error, QString *trashPath) const
{
    if (!ensureTrashFolder(error))
        return false;
    const QString trash = SystemLayout::trashDirectory();
    QSet<QString> tried;
    for (;;) {
        const QString destination = TrashNaming::freeDestination(trash, path, tried);
        const int failure = renameWithoutReplacing(path, destination);
        if (failure == 0) {
            if (trashPath)
                *trashPath = destination;
            return true;
        }
        if (failure != EEXIST) {
            *error = QString::fromLocal8Bit(std::strerror(failure));
            return false;
        }
    }
}
