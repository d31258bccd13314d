// SPDX-License-Identifier: MIT
#include "RunningApplications.h"

#if defined(Q_OS_MACOS)
#include "mac/WorkspaceRunningApplications.h"
#else
#include "ProcRunningApplications.h"
#endif

std::shared_ptr<RunningApplications> RunningApplications::system()
{
#if defined(Q_OS_MACOS)
    return std::make_shared<WorkspaceRunningApplications>();
#else
    return std::make_shared<ProcRunningApplications>();
#endif
}
