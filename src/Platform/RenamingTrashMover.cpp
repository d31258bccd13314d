// SPDX-License-Identifier: MIT
#include "RenamingTrashMover.h"

#include "Platform/LinkProofMove.h"

#include <QFile>

#include <unistd.h>

Result<QString> RenamingTrashMover::moveToTrash(const QString &path) const
{
    if (const auto refused = ensureTrashFolder(m_layout))
        return Failure(*refused);
    const auto mover = LinkProofMove::open(QFile::encodeName(m_layout.root()),
                                           QFile::encodeName(m_layout.home()), ::getuid());
    if (!mover)
        return Failure(mover.error());
    const LinkProofMove::Outcome outcome = mover->moveToTrash(QFile::encodeName(path));
    if (!outcome.moved)
        return Failure(outcome.error);
    return QFile::decodeName(outcome.destination);
}
