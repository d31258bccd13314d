// SPDX-License-Identifier: MIT
#include "PrivilegedShell.h"

#include <QProcess>
#include <QStandardPaths>

#include <unistd.h>

namespace {
// pkexec's status when the user dismissed the authentication dialog.
[[maybe_unused]] constexpr int kPkexecDismissed = 126;

struct Finished
{
    bool started = false;
    int status = -1;
    QString output;
};

// No time limit: the user may take a while to answer, and a root process cannot be killed
// from here anyway.
Finished runToEnd(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(program, arguments, QIODevice::ReadOnly);
    if (!process.waitForStarted())
        return Finished{false, -1, process.errorString()};
    process.waitForFinished(-1);
    const QString output = QString::fromUtf8(process.readAll()).trimmed();
    if (process.exitStatus() == QProcess::CrashExit)
        return Finished{true, -1, output.isEmpty() ? process.errorString() : output};
    return Finished{true, process.exitCode(), output};
}

PrivilegedShell::Result failure(const Finished &finished)
{
    QString message = finished.output;
    if (message.isEmpty())
        message = QStringLiteral("exit status %1").arg(finished.status);
    return PrivilegedShell::Result{PrivilegedShell::Outcome::failed, message};
}
} // namespace

#if defined(Q_OS_MACOS)
PrivilegedShell::Result PrivilegedShell::run(const QString &,
                                             const QString &appleScriptSource) const
{
    const Finished finished =
        runToEnd(QStringLiteral("/usr/bin/osascript"), {QStringLiteral("-e"), appleScriptSource});
    if (finished.started && finished.status == 0)
        return Result{Outcome::completed, {}};
    if (finished.output.contains(QLatin1String("(-128)")))
        return Result{Outcome::canceled, {}};
    return failure(finished);
}
#else
PrivilegedShell::Result PrivilegedShell::run(const QString &commandLine, const QString &) const
{
    const QStringList shellArguments{QStringLiteral("/bin/sh"), QStringLiteral("-c"), commandLine};
    Finished finished;
    if (geteuid() == 0) {
        finished = runToEnd(shellArguments.first(), shellArguments.mid(1));
    } else {
        QString pkexec = QStandardPaths::findExecutable(QStringLiteral("pkexec"));
        if (pkexec.isEmpty())
            pkexec = QStringLiteral("/usr/bin/pkexec");
        finished = runToEnd(pkexec, shellArguments);
        if (finished.started && finished.status == kPkexecDismissed)
            return Result{Outcome::canceled, {}};
    }
    if (finished.started && finished.status == 0)
        return Result{Outcome::completed, {}};
    return failure(finished);
}
#endif
