// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <memory>

// Runs one shell command line as root after the user authenticated once: the AppleScript source
// ("do shell script ... with administrator privileges") through osascript on macOS, the line
// through pkexec on Linux. Blocking while the password prompt is up: call it off the GUI thread.
// Tests pass a fake.
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
                                     const QString &appleScriptSource) const = 0;

    // OsascriptShell on macOS, PkexecShell elsewhere.
    [[nodiscard]] static std::shared_ptr<const PrivilegedShell> system();
};
