// SPDX-License-Identifier: MIT
#pragma once

#include "PrivilegedShell.h"

#include <optional>

// macOS: runs the AppleScript source with `osascript -e SOURCE`; the system shows its own
// authentication dialog. osascript reports a failed script on its last line as
// "<from>:<to>: execution error: <message> (<number>)"; number -128 means the user dismissed the
// dialog. The command line itself is not used. The program can be replaced for tests.
class OsascriptShell : public PrivilegedShell
{
public:
    explicit OsascriptShell(QString program = QStringLiteral("/usr/bin/osascript"));

    [[nodiscard]] Result run(const QString &commandLine,
                             const QString &appleScriptSource) const override;

    struct ScriptError
    {
        std::optional<int> number;
        QString message;
    };
    // The error osascript printed: number and message when its last line has the form above,
    // else no number and the whole output as the message.
    [[nodiscard]] static ScriptError scriptError(const QString &output);

private:
    QString m_program;
};
