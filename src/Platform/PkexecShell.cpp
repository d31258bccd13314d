// SPDX-License-Identifier: MIT
#include "PkexecShell.h"

#include "TrustedProgram.h"
#include "UntimedProcess.h"

#include <QFileInfo>

#include <unistd.h>

namespace {
// pkexec's status when the user dismissed the authentication dialog.
constexpr int kPkexecDismissed = 126;
} // namespace

PrivilegedShell::Result PkexecShell::run(const QString &program, const QStringList &arguments,
                                         const QByteArray &input) const
{
    UntimedProcess finished;
    if (geteuid() == 0) {
        finished = UntimedProcess::run(program, arguments, input);
    } else {
        // By absolute path, never through PATH, which the user's programs control.
        const QString pkexec = QStringLiteral("/usr/bin/pkexec");
        if (!QFileInfo::exists(pkexec))
            return Result{Outcome::failed, QStringLiteral("pkexec is not installed"), {}};
        if (const QString refusal = TrustedProgram::refusal(pkexec); !refusal.isEmpty())
            return Result{Outcome::failed, refusal, {}};
        finished = UntimedProcess::run(pkexec, QStringList{program} + arguments, input);
        if (finished.started && finished.status == kPkexecDismissed)
            return Result{Outcome::canceled, {}, {}};
    }
    if (finished.started && finished.status == 0)
        return Result{Outcome::completed, {}, finished.output};
    return Result{Outcome::failed, finished.failureMessage(), {}};
}
