// SPDX-License-Identifier: MIT
#include "OsascriptShell.h"

#include "UntimedProcess.h"

#include <QRegularExpression>

namespace {
// The AppleScript error number of a dismissed authentication dialog ("User canceled.").
constexpr int kUserCanceled = -128;
} // namespace

OsascriptShell::OsascriptShell(QString program) : m_program(std::move(program)) {}

PrivilegedShell::Result OsascriptShell::run(const QString &, const QString &appleScriptSource) const
{
    const UntimedProcess finished =
        UntimedProcess::run(m_program, {QStringLiteral("-e"), appleScriptSource});
    if (finished.started && finished.status == 0)
        return Result{Outcome::completed, {}};
    if (!finished.started)
        return Result{Outcome::failed, finished.failureMessage()};
    const ScriptError error = scriptError(finished.output);
    if (error.number == kUserCanceled)
        return Result{Outcome::canceled, {}};
    return Result{Outcome::failed,
                  error.message.isEmpty() ? finished.failureMessage() : error.message};
}

OsascriptShell::ScriptError OsascriptShell::scriptError(const QString &output)
{
    static const QRegularExpression form(
        QStringLiteral("^(?:\\d+:\\d+: )?execution error: (.*) \\((-?\\d+)\\)$"));
    const QString lastLine = output.section(QLatin1Char('\n'), -1).trimmed();
    const QRegularExpressionMatch match = form.match(lastLine);
    if (!match.hasMatch())
        return ScriptError{std::nullopt, output};
    bool isNumber = false;
    const int number = match.captured(2).toInt(&isNumber);
    return ScriptError{isNumber ? std::optional<int>(number) : std::nullopt, match.captured(1)};
}
