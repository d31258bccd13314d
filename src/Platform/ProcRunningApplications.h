// SPDX-License-Identifier: MIT
#pragma once

#include "RunningApplications.h"

// The Linux process table: every process under /proc whose executable this user may read,
// SIGTERM and SIGKILL; a zombie counts as terminated.
class ProcRunningApplications : public RunningApplications
{
public:
    [[nodiscard]] QList<RunningApplication> list() const override;
    [[nodiscard]] qint64 ownProcessIdentifier() const override;
    void terminate(const RunningApplication &application) override;
    void forceTerminate(const RunningApplication &application) override;
    [[nodiscard]] bool isTerminated(const RunningApplication &application) const override;
};
