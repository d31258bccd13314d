// SPDX-License-Identifier: MIT
#pragma once

#include "Discovery/OrphanGroup.h"
#include "Platform/SystemLayout.h"

#include <QList>
#include <memory>

class ToolRunner;

// Finds what apps that are gone left behind: the entries of the folders discovery scans whose
// identifier or name no installed app claims, grouped by the app they most likely came from.
// An item starts selected only when its name is an identifier and the same app also left an
// installer receipt, a sandbox container or a launch job; plain names are tied to a group by
// that app's name or vendor and never selected. The platform's own entries and the shared
// system folders are never listed. Blocking: run it off the GUI thread.
class OrphanFinder
{
public:
    explicit OrphanFinder(SystemLayout layout, std::shared_ptr<const ToolRunner> runner = {});

    // Groups in name order, items in path order.
    [[nodiscard]] QList<OrphanGroup> find() const;

private:
    SystemLayout m_layout;
    std::shared_ptr<const ToolRunner> m_runner;
};
