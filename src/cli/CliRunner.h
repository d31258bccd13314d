// SPDX-License-Identifier: MIT
#pragma once

#include "CliOptions.h"

#include <QTextStream>

class MainViewModel;

// Runs one quenzo-cli command over MainViewModel, as the window would, and prints the result.
class CliRunner
{
public:
    explicit CliRunner(const CliOptions &options);

    // The process exit code: 0 done, 1 nothing could be read (or an item failed).
    [[nodiscard]] int run();

private:
    // Hands the apps to the controller as one drop and waits until no session scans.
    void scan(MainViewModel &viewModel);
    void printScan(const MainViewModel &viewModel);
    // Scan printed, then confirm, move and report; the exit code of the uninstall.
    [[nodiscard]] int uninstall(MainViewModel &viewModel);

    CliOptions m_options;
    QTextStream m_out;
    QTextStream m_err;
};
