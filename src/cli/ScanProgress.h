// SPDX-License-Identifier: MIT
#pragma once

#include "Discovery/FileDiscoveryService.h"

#include <QMutex>
#include <QString>
#include <memory>

// One status line on stderr while apps are scanned ("Scanning Writer: ~/Library/Caches"),
// rewritten in place and cleared at the end. Only when stderr is a terminal: piped or
// redirected runs get nothing on stderr. Discoveries report from worker threads.
class ScanProgress
{
public:
    // Nothing when stderr is not a terminal.
    [[nodiscard]] static std::shared_ptr<ScanProgress> forTerminal();

    // The callback to hand to FileDiscoveryService; keeps this object alive.
    [[nodiscard]] static FileDiscoveryService::Progress
    callback(std::shared_ptr<ScanProgress> self);

    void show(const QString &appName, const QString &location);
    // Clears the line; later reports are ignored.
    void finish();

private:
    ScanProgress() = default;

    QMutex m_mutex;
    bool m_shown = false;
    bool m_finished = false;
};
