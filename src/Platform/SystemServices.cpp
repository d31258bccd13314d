// SPDX-License-Identifier: MIT
#include "SystemServices.h"

#include "RenamingTrashMover.h"
#include "SystemLayout.h"

#if defined(Q_OS_MACOS)
#include "OsascriptShell.h"
#include "mac/FileManagerTrash.h"
#include "mac/WorkspaceRunningApplications.h"
#else
#include "PkexecShell.h"
#include "ProcRunningApplications.h"
#endif

namespace SystemServices {

std::shared_ptr<const PrivilegedShell> privilegedShell()
{
#if defined(Q_OS_MACOS)
    return std::make_shared<const OsascriptShell>();
#else
    return std::make_shared<const PkexecShell>();
#endif
}

std::shared_ptr<RunningApplications> runningApplications()
{
#if defined(Q_OS_MACOS)
    return std::make_shared<WorkspaceRunningApplications>();
#else
    return std::make_shared<ProcRunningApplications>();
#endif
}

std::shared_ptr<const TrashMover> trashMover(const SystemLayout &layout)
{
#if defined(Q_OS_MACOS)
    if (layout.usesNativeFileServices())
        return std::make_shared<const FileManagerTrash>();
#endif
    return std::make_shared<const RenamingTrashMover>(layout);
}

} // namespace SystemServices
