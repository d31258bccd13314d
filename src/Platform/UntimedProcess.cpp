// SPDX-License-Identifier: MIT
#include "UntimedProcess.h"

#include <QProcess>

UntimedProcess UntimedProcess::run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(program, arguments, QIODevice::ReadOnly);
    if (!process.waitForStarted())
        return UntimedProcess{false, -1, process.errorString()};
    process.waitForFinished(-1);
    const QString output = QString::fromUtf8(process.readAll()).trimmed();
    if (process.exitStatus() == QProcess::CrashExit)
        return UntimedProcess{true, -1, output.isEmpty() ? process.errorString() : output};
    return UntimedProcess{true, process.exitCode(), output};
}

QString UntimedProcess::failureMessage() const
{
    return output.isEmpty() ? QStringLiteral("exit status %1").arg(status) : output;
}
