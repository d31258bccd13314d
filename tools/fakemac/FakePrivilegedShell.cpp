// SPDX-License-Identifier: MIT
#include "FakePrivilegedShell.h"

#include "Platform/UntimedProcess.h"

FakePrivilegedShell::FakePrivilegedShell(Behaviour behaviour) : m_behaviour(behaviour) {}

PrivilegedShell::Result FakePrivilegedShell::run(const QString &program,
                                                 const QStringList &arguments,
                                                 const QByteArray &input) const
{
    m_calls->batches.append(input);
    if (duringPrompt)
        duringPrompt();
    switch (m_behaviour) {
    case Behaviour::cancel:
        return Result{Outcome::canceled, {}, {}};
    case Behaviour::fail:
        return Result{Outcome::failed, failureMessage(), {}};
    case Behaviour::runAsCaller:
        break;
    }
    const UntimedProcess finished = UntimedProcess::run(program, arguments, input);
    if (!finished.started || finished.status != 0)
        return Result{Outcome::failed, finished.failureMessage(), {}};
    return Result{Outcome::completed, {}, finished.output};
}

QString FakePrivilegedShell::failureMessage()
{
    return QStringLiteral("The disk is on fire.");
}

QString FakePrivilegedShell::helper()
{
    return QStringLiteral(QUENZO_HELPER_PATH);
}
