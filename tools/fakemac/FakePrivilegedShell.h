// SPDX-License-Identifier: MIT
#pragma once

#include "Platform/PrivilegedShell.h"

#include <QStringList>
#include <functional>
#include <memory>

// A privileged shell for tests: records every run, then either runs the program with the
// test's own rights (root in CI, as the real shell does when already root) or answers as if
// the user had cancelled the prompt or the run had failed.
class FakePrivilegedShell : public PrivilegedShell
{
public:
    enum class Behaviour { runAsCaller, cancel, fail };

    explicit FakePrivilegedShell(Behaviour behaviour = Behaviour::runAsCaller);

    // Runs while "the prompt is up", before the program: what a hostile program of the user's
    // could do in that time.
    std::function<void()> duringPrompt;

    Result run(const QString &program, const QStringList &arguments,
               const QByteArray &input) const override;

    // The batches received, one per run (one prompt each).
    [[nodiscard]] QList<QByteArray> batches() const { return m_calls->batches; }
    [[nodiscard]] static QString failureMessage();
    // The built privileged helper.
    [[nodiscard]] static QString helper();

private:
    struct Calls
    {
        QList<QByteArray> batches;
    };
    Behaviour m_behaviour;
    std::shared_ptr<Calls> m_calls = std::make_shared<Calls>();
};
