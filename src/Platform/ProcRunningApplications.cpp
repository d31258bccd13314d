// SPDX-License-Identifier: MIT
#include "ProcRunningApplications.h"

#include <QDir>
#include <QFile>

#include <csignal>
#include <unistd.h>

namespace {
const QString kProc = QStringLiteral("/proc/");

std::optional<QString> executableOf(qint64 pid)
{
    QString target = QFile::symLinkTarget(kProc + QString::number(pid) + QStringLiteral("/exe"));
    if (target.isEmpty())
        return std::nullopt;
    // The kernel marks a replaced or removed executable; its old path still tells the bundle.
    const QLatin1String deleted(" (deleted)");
    if (target.endsWith(deleted))
        target.chop(deleted.size());
    return target;
}

// /proc/<pid>/stat after the parenthesised command name (which may hold blanks): state first,
// start time the twentieth field after it.
struct ProcessState
{
    char state = 0;
    quint64 startTime = 0;
};

ProcessState stateOf(qint64 pid)
{
    QFile stat(kProc + QString::number(pid) + QStringLiteral("/stat"));
    if (!stat.open(QIODevice::ReadOnly))
        return {};
    const QByteArray text = stat.readAll();
    const qsizetype close = text.lastIndexOf(')');
    if (close < 0)
        return {};
    const QList<QByteArray> fields = text.mid(close + 2).split(' ');
    if (fields.size() < 20 || fields.at(0).isEmpty())
        return {};
    return ProcessState{fields.at(0).at(0), fields.at(19).toULongLong()};
}

bool isSameProcess(const RunningApplication &application)
{
    const ProcessState now = stateOf(application.processIdentifier);
    return now.state != 0 && now.startTime == application.startTime;
}
} // namespace

QList<RunningApplication> ProcRunningApplications::list() const
{
    QList<RunningApplication> result;
    const QStringList entries = QDir(kProc).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &entry : entries) {
        bool isNumber = false;
        const qint64 pid = entry.toLongLong(&isNumber);
        if (!isNumber)
            continue;
        // Processes of other users hide their executable; they are not ours to quit anyway.
        auto executable = executableOf(pid);
        const ProcessState state = stateOf(pid);
        if (executable && state.state != 0)
            result.append(
                RunningApplication{pid, std::nullopt, std::nullopt, executable, state.startTime});
    }
    return result;
}

qint64 ProcRunningApplications::ownProcessIdentifier() const
{
    return getpid();
}

void ProcRunningApplications::terminate(const RunningApplication &application)
{
    if (isSameProcess(application))
        ::kill(pid_t(application.processIdentifier), SIGTERM);
}

void ProcRunningApplications::forceTerminate(const RunningApplication &application)
{
    if (isSameProcess(application))
        ::kill(pid_t(application.processIdentifier), SIGKILL);
}

bool ProcRunningApplications::isTerminated(const RunningApplication &application) const
{
    if (!isSameProcess(application))
        return true;
    const char state = stateOf(application.processIdentifier).state;
    return state == 'Z' || state == 'X';
}
