// SPDX-License-Identifier: MIT
#include "FakePrivilegedShell.h"

#include <QProcess>

FakePrivilegedShell::FakePrivilegedShell(Behaviour behaviour) : m_behaviour(behaviour) {}

PrivilegedShell::Result FakePrivilegedShell::run(const QString &commandLine,
                                                 const QString &appleScriptSource) const
{
    m_calls->lines.append(commandLine);
    m_calls->appleScripts.append(appleScriptSource);
    switch (m_behaviour) {
    case Behaviour::cancel:
        return Result{Outcome::canceled, {}};
    case Behaviour::fail:
        return Result{Outcome::failed, failureMessage()};
    case Behaviour::runAsCaller:
        break;
    }
    QProcess shell;
    shell.setProcessChannelMode(QProcess::MergedChannels);
    shell.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), commandLine});
    if (!shell.waitForFinished(-1) || shell.exitCode() != 0)
        return Result{Outcome::failed, QString::fromUtf8(shell.readAll())};
    return Result{Outcome::completed, {}};
}

QString FakePrivilegedShell::failureMessage()
{
    return QStringLiteral("The disk is on fire.");
}
