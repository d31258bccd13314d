// SPDX-License-Identifier: MIT
#pragma once

#include "PrivilegedShell.h"

// Linux: `pkexec /bin/sh -c LINE` (status 126: the user dismissed the dialog), or plain
// `/bin/sh -c LINE` when this process already is root. The AppleScript source is not used.
class PkexecShell : public PrivilegedShell
{
public:
    [[nodiscard]] Result run(const QString &commandLine,
                             const QString &appleScriptSource) const override;
};
