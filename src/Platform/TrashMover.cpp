// SPDX-License-Identifier: MIT
#include "TrashMover.h"

#include "NativeServices.h"
#include "RenamingTrashMover.h"

#if defined(Q_OS_MACOS)
#include "mac/FileManagerTrash.h"
#endif

std::shared_ptr<const TrashMover> TrashMover::system()
{
#if defined(Q_OS_MACOS)
    if (NativeServices::serveFiles())
        return std::make_shared<const FileManagerTrash>();
#endif
    return std::make_shared<const RenamingTrashMover>();
}
