// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// Runs a program to its end with no time limit, `input` on its standard input: for the
// privileged shells, whose prompt the user may leave open for a while and whose root process
// could not be killed from here anyway.
struct UntimedProcess
{
    bool started = false;
    int status = -1;   // the exit status; -1 when it did not start or crashed
    QByteArray output; // the standard output, as it came
    QString errors;    // the error output, trimmed; the reason when it did not start

    [[nodiscard]] static UntimedProcess run(const QString &program, const QStringList &arguments,
                                            const QByteArray &input = {});
    // The error output, or "exit status N" when there is none.
    [[nodiscard]] QString failureMessage() const;
};
