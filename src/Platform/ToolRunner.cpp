// SPDX-License-Identifier: MIT
#include "ToolRunner.h"
#include "LogCategories.h"

#include <QProcess>

namespace {
// A tool that hangs must not hang the program; real tools answer in seconds.
constexpr int kTimeoutMs = 120'000;
} // namespace

ToolResult ToolRunner::run(const QString &program, const QStringList &arguments,
                           ErrorOutput errors) const
{
    QProcess process;
    if (errors == ErrorOutput::merge)
        process.setProcessChannelMode(QProcess::MergedChannels);
    else
        process.setStandardErrorFile(QProcess::nullDevice());
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(program, arguments, QIODevice::ReadOnly);
    ToolResult result;
    if (!process.waitForStarted()) {
        result.errorText = process.errorString();
        qCDebug(lcPlatform) << "cannot start" << program << result.errorText;
        return result;
    }
    // QProcess drains the pipe into its own buffer while we wait, so a chatty tool never blocks.
    if (!process.waitForFinished(kTimeoutMs)) {
        process.kill();
        process.waitForFinished();
        result.errorText = QStringLiteral("%1 did not finish in time").arg(program);
        result.output = process.readAll();
        qCDebug(lcPlatform) << result.errorText;
        return result;
    }
    result.output = process.readAll();
    if (process.exitStatus() == QProcess::CrashExit) {
        result.errorText = process.errorString();
        qCDebug(lcPlatform) << program << "crashed:" << result.errorText;
        return result;
    }
    result.exitStatus = process.exitCode();
    if (result.exitStatus != 0)
        qCDebug(lcPlatform) << program << arguments << "exited with" << result.exitStatus;
    return result;
}
