// SPDX-License-Identifier: MIT
#include "UntimedProcess.h"

#include <QProcess>

UntimedProcess UntimedProcess::run(const QString &program, const QStringList &arguments,
                                   const QByteArray &input)
{
    QProcess process;
    if (input.isEmpty())
        process.setStandardInputFile(QProcess::nullDevice());
    process.start(program, arguments);
    if (!process.waitForStarted())
        return UntimedProcess{false, -1, {}, process.errorString()};
    if (!input.isEmpty()) {
        // QProcess feeds the pipe while it waits below, so a batch of any size goes through.
        process.write(input);
        process.closeWriteChannel();
    }
    process.waitForFinished(-1);
    const QByteArray output = process.readAllStandardOutput();
    const QString errors = QString::fromUtf8(process.readAllStandardError()).trimmed();
    if (process.exitStatus() == QProcess::CrashExit)
        return UntimedProcess{true, -1, output, errors.isEmpty() ? process.errorString() : errors};
    return UntimedProcess{true, process.exitCode(), output, errors};
}

QString UntimedProcess::failureMessage() const
{
    return errors.isEmpty() ? QStringLiteral("exit status %1").arg(status) : errors;
}
