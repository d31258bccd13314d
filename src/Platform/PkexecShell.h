// SPDX-License-Identifier: MIT
#pragma once

#include "PrivilegedShell.h"

// Linux: `pkexec PROGRAM ARGUMENTS...` with the input on its standard input (status 126: the
// user dismissed the dialog), or the program itself when this process already is root.
class PkexecShell : public PrivilegedShell
{
public:
    [[nodiscard]] Result run(const QString &program, const QStringList &arguments,
                             const QByteArray &input) const override;
};
