// SPDX-License-Identifier: MIT
#include "RenamingTrashMover.h"

#include "Platform/LinkProofMove.h"
#include "Platform/SystemLayout.h"

#include <QFile>

#include <unistd.h>

bool RenamingTrashMover::moveToTrash(const QString &path, QString *error, QString *trashPath) const
{
    if (!ensureTrashFolder(error))
        return false;
    const auto mover =
        LinkProofMove::open(QFile::encodeName(SystemLayout::root()),
                            QFile::encodeName(SystemLayout::home()), ::getuid(), error);
    if (!mover)
        return false;
    const LinkProofMove::Outcome outcome = mover->moveToTrash(QFile::encodeName(path));
    if (!outcome.moved)
        *error = outcome.error;
    else if (trashPath)
        *trashPath = QFile::decodeName(outcome.destination);
    return outcome.moved;
}
