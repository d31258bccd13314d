// SPDX-License-Identifier: MIT
#pragma once

#include "CliOptions.h"
#include "Platform/SystemLayout.h"

#include <QTextStream>

class MainViewModel;

// Runs one quenzo-cli command over MainViewModel, as the window would, and prints the result.
class CliRunner
{
public:
    CliRunner(const CliOptions &options, SystemLayout layout);

    // The process exit code: 0 done, 1 nothing could be read (or an item failed).
    [[nodiscard]] int run();

private:
    // Hands the apps to the controller as one drop and waits until no session scans.
    void scan(MainViewModel &viewModel);
    void printScan(const MainViewModel &viewModel);
    // Scan printed, then confirm, move and report; the exit code of the uninstall.
    [[nodiscard]] int uninstall(MainViewModel &viewModel);

    CliOptions m_options;
    SystemLayout m_layout;
    QTextStream m_out;
    QTextStream m_err;
};
