// SPDX-License-Identifier: MIT
#pragma once

#include "Platform/RunningApplications.h"

#include <memory>

// macOS: the applications NSWorkspace reports as running, asked to quit through
// NSRunningApplication. Each listed application is remembered as the NSRunningApplication object
// of that very process, so a process identifier reused later never reaches another process.
// No Apple type appears here: the objects live in the implementation
// (WorkspaceRunningApplications.mm).
class WorkspaceRunningApplications : public RunningApplications
{
public:
    WorkspaceRunningApplications();
    ~WorkspaceRunningApplications() override;

    [[nodiscard]] QList<RunningApplication> list() const override;
    [[nodiscard]] qint64 ownProcessIdentifier() const override;
    void terminate(const RunningApplication &application) override;
    void forceTerminate(const RunningApplication &application) override;
    [[nodiscard]] bool isTerminated(const RunningApplication &application) const override;

private:
    struct Listed;
    std::unique_ptr<Listed> m_listed;
};
