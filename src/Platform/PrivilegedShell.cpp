// SPDX-License-Identifier: MIT
#include "PrivilegedShell.h"

#include "OsascriptShell.h"
#include "PkexecShell.h"

std::shared_ptr<const PrivilegedShell> PrivilegedShell::system()
{
#if defined(Q_OS_MACOS)
    return std::make_shared<const OsascriptShell>();
#else
    return std::make_shared<const PkexecShell>();
#endif
}
