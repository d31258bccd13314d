// SPDX-License-Identifier: MIT
#pragma once

#include "Platform/PrivilegedShell.h"

#include <QStringList>
#include <memory>

// A privileged shell for tests: records every line it is given, then either runs it with the
// test's own rights (/bin/sh -c, as the real shell does when already root) or answers as if
// the user had cancelled the prompt or the script had failed.
class FakePrivilegedShell : public PrivilegedShell
{
public:
    enum class Behaviour { runAsCaller, cancel, fail };

    explicit FakePrivilegedShell(Behaviour behaviour = Behaviour::runAsCaller);

    Result run(const QString &commandLine, const QString &appleScriptSource) const override;

    // The command lines and AppleScript sources received, one per run.
    [[nodiscard]] QStringList lines() const { return m_calls->lines; }
    [[nodiscard]] QStringList appleScripts() const { return m_calls->appleScripts; }
    [[nodiscard]] static QString failureMessage();

private:
    struct Calls
    {
        QStringList lines;
        QStringList appleScripts;
    };
    Behaviour m_behaviour;
    std::shared_ptr<Calls> m_calls = std::make_shared<Calls>();
};
