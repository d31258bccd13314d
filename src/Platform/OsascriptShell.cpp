// SPDX-License-Identifier: MIT
#include "OsascriptShell.h"

#include "UntimedProcess.h"

#include <QRegularExpression>
#include <QTemporaryFile>

namespace {
// The AppleScript error number of a dismissed authentication dialog ("User canceled.").
constexpr int kUserCanceled = -128;
} // namespace

OsascriptShell::OsascriptShell(QString program) : m_program(std::move(program)) {}

PrivilegedShell::Result OsascriptShell::run(const QString &program, const QStringList &arguments,
                                            const QByteArray &input) const
{
    QTemporaryFile batch; // mode 0600, removed when this returns
    if (!batch.open() || batch.write(input) != input.size() || !batch.flush())
        return Result{Outcome::failed, batch.errorString(), {}};
    const QString source = appleScriptSource(
        program, arguments + QStringList{QStringLiteral("--batch"), batch.fileName()});
    const UntimedProcess finished = UntimedProcess::run(m_program, {QStringLiteral("-e"), source});
    if (finished.started && finished.status == 0)
        return Result{Outcome::completed, {}, finished.output};
    if (!finished.started)
        return Result{Outcome::failed, finished.failureMessage(), {}};
    const ScriptError error = scriptError(finished.errors);
    if (error.number == kUserCanceled)
        return Result{Outcome::canceled, {}, {}};
    return Result{
        Outcome::failed, error.message.isEmpty() ? finished.failureMessage() : error.message, {}};
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

QString OsascriptShell::appleScriptSource(const QString &program, const QStringList &arguments)
{
    QStringList words{shellQuoted(program)};
    for (const QString &argument : arguments)
        words.append(shellQuoted(argument));
    // Backslashes first, so the ones added before quotes are not doubled again.
    QString escaped = words.join(QLatin1Char(' '));
    escaped.replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
    escaped.replace(QLatin1Char('"'), QStringLiteral("\\\""));
    // Unaltered line endings: the helper's results are parsed byte for byte.
    return QStringLiteral("do shell script \"") + escaped +
           QStringLiteral("\" with administrator privileges without altering line endings");
}

QString OsascriptShell::shellQuoted(const QString &text)
{
    QString quoted = text;
    quoted.replace(QLatin1Char('\''), QStringLiteral("'\\''"));
    return QLatin1Char('\'') + quoted + QLatin1Char('\'');
}
