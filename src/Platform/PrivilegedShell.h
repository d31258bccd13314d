// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Runs one shell command line as root after the user authenticated once. macOS runs the
// AppleScript source through osascript ("do shell script ... with administrator privileges");
// Linux runs the line through pkexec, or directly when this process already is root.
// Blocking while the password prompt is up: call it off the GUI thread. Tests pass a fake.
class PrivilegedShell
{
public:
    enum class Outcome { completed, canceled, failed };
    struct Result
    {
        Outcome outcome = Outcome::failed;
        QString message; // why it failed; empty otherwise
    };

    virtual ~PrivilegedShell() = default;
    [[nodiscard]] virtual Result run(const QString &commandLine,
                                     const QString &appleScriptSource) const;
};
