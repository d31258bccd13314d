// SPDX-License-Identifier: MIT
#pragma once

#include <QLoggingCategory>

// One category per subsystem of the core, quiet unless asked for: `quenzo-cli --verbose` or
// QT_LOGGING_RULES="quenzo.*.debug=true". They carry the reasons of failures the program
// handles by leaving something out, so a bug report can say why. The window's is lcUi (Views).
Q_DECLARE_LOGGING_CATEGORY(lcDiscovery) // quenzo.discovery: unreadable folders, refused files
Q_DECLARE_LOGGING_CATEGORY(lcRemoval)   // quenzo.removal: moves, prompts and tools that failed
Q_DECLARE_LOGGING_CATEGORY(lcPlatform)  // quenzo.platform: refused property lists, tool runs

namespace LogCategories {
// Turns the debug output of every quenzo.* category on (a later QT_LOGGING_RULES still wins).
void enableVerbose();
} // namespace LogCategories
