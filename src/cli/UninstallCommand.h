// SPDX-License-Identifier: MIT
#pragma once

#include "CliOptions.h"

#include <QTextStream>

class MainViewModel;

// The second half of `quenzo-cli uninstall`, after the scan was printed: asks before moving
// anything, starts the controller's uninstall, streams every log line as it is written and
// prints each session's summary.
class UninstallCommand
{
public:
    UninstallCommand(const CliOptions &options, QTextStream &out, QTextStream &err);

    // The process exit code: 0 nothing failed, 1 an item failed or the user said no, 2 no
    // terminal to ask on and no --yes.
    [[nodiscard]] int run(MainViewModel &viewModel);

private:
    enum class Answer { yes, no, cannotAsk };
    [[nodiscard]] Answer confirm(const MainViewModel &viewModel);
    void uninstallAndWait(MainViewModel &viewModel);
    void printSummaries(const MainViewModel &viewModel);

    CliOptions m_options;
    QTextStream &m_out;
    QTextStream &m_err;
    // Log lines go to stdout as text, to stderr when stdout carries JSON.
    QTextStream &m_log;
};
