// SPDX-License-Identifier: MIT
#include "RenamingTrashMover.h"

#include "Platform/LinkProofMove.h"

#include <QFile>

#include <unistd.h>

bool RenamingTrashMover::moveToTrash(const QString &path, QString *error, QString *trashPath) const
{
    if (!ensureTrashFolder(m_layout, error))
        return false;
    const auto mover =
        LinkProofMove::open(QFile::encodeName(m_layout.root()),
                            QFile::encodeName(m_layout.home()), ::getuid(), error);
    if (!mover)
        return false;
    const LinkProofMove::Outcome outcome = mover->moveToTrash(QFile::encodeName(path));
    if (!outcome.moved)
        *error = outcome.error;
    else if (trashPath)
        *trashPath = QFile::decodeName(outcome.destination);
    return outcome.moved;
}
