// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// What a finished tool gave back. exitStatus is -1 and errorText set when it could not start.
struct ToolResult
{
    int exitStatus = -1;
    QByteArray output;
    QString errorText;

    [[nodiscard]] bool succeeded() const { return exitStatus == 0; }
};

// Runs a system tool by path with an argument list (never a shell), drains its output and
// waits for it. Blocking: call it from a background thread. Tests hand the services a fake.
class ToolRunner
{
public:
    enum class ErrorOutput { discard, merge };

    virtual ~ToolRunner() = default;
    [[nodiscard]] virtual ToolResult run(const QString &program, const QStringList &arguments,
                                         ErrorOutput errors = ErrorOutput::discard) const;
};
