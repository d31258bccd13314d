// SPDX-License-Identifier: MIT
#include "PkexecShell.h"

#include "UntimedProcess.h"

#include <QStandardPaths>

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
        QString pkexec = QStandardPaths::findExecutable(QStringLiteral("pkexec"));
        if (pkexec.isEmpty())
            pkexec = QStringLiteral("/usr/bin/pkexec");
        finished = UntimedProcess::run(pkexec, QStringList{program} + arguments, input);
        if (finished.started && finished.status == kPkexecDismissed)
            return Result{Outcome::canceled, {}, {}};
    }
    if (finished.started && finished.status == 0)
        return Result{Outcome::completed, {}, finished.output};
    return Result{Outcome::failed, finished.failureMessage(), {}};
}
