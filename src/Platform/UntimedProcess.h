// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

// Runs a program to its end with no time limit, output channels merged and no input: for the
// privileged shells, whose prompt the user may leave open for a while and whose root process
// could not be killed from here anyway.
struct UntimedProcess
{
    bool started = false;
    int status = -1; // the exit status; -1 when it did not start or crashed
    QString output;  // trimmed; the reason when it did not start

    [[nodiscard]] static UntimedProcess run(const QString &program, const QStringList &arguments);
    // The output, or "exit status N" when there is none.
    [[nodiscard]] QString failureMessage() const;
};
