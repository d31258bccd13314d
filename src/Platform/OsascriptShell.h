// SPDX-License-Identifier: MIT
#pragma once

#include "PrivilegedShell.h"

#include <optional>

// macOS: runs `osascript -e SOURCE`, SOURCE being "do shell script LINE with administrator
// privileges"; the system shows its own authentication dialog. AppleScript's shell has no
// input of ours, so the batch goes through a file of the user's that the program is told to
// read (the program checks everything in it again anyway). osascript reports a failed script on
// its last line as "<from>:<to>: execution error: <message> (<number>)"; number -128 means the
// user dismissed the dialog. The program can be replaced for tests.
class OsascriptShell : public PrivilegedShell
{
public:
    explicit OsascriptShell(QString program = QStringLiteral("/usr/bin/osascript"));

    [[nodiscard]] Result run(const QString &program, const QStringList &arguments,
                             const QByteArray &input) const override;

    struct ScriptError
    {
        std::optional<int> number;
        QString message;
    };
    // The error osascript printed: number and message when its last line has the form above,
    // else no number and the whole output as the message.
    [[nodiscard]] static ScriptError scriptError(const QString &output);
    // The AppleScript that runs `program` with `arguments` as root, each one shell word.
    [[nodiscard]] static QString appleScriptSource(const QString &program,
                                                   const QStringList &arguments);
    // One single-quoted shell word holding exactly `text`.
    [[nodiscard]] static QString shellQuoted(const QString &text);

private:
    QString m_program;
};
