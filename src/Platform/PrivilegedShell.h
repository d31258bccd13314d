// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <memory>

// Runs one program as root after the user authenticated once: through pkexec on Linux (or
// directly when already root), through osascript's "do shell script ... with administrator
// privileges" on macOS. The program gets `input` as its batch. Blocking while the password
// prompt is up: call it off the GUI thread. Tests pass a fake.
class PrivilegedShell
{
public:
    enum class Outcome { completed, canceled, failed };
    struct Result
    {
        Outcome outcome = Outcome::failed;
        QString message;   // why it failed; empty otherwise
        QByteArray output; // the program's standard output, when it ran
    };

    virtual ~PrivilegedShell() = default;
    [[nodiscard]] virtual Result run(const QString &program, const QStringList &arguments,
                                     const QByteArray &input) const = 0;
};
