// SPDX-License-Identifier: MIT
#pragma once

#include "SystemLayout.h"

#include <QString>
#include <optional>

// `--root DIR` and `--home DIR`, taken the same way by the window and quenzo-cli.
namespace LayoutOptions {

// Why a folder given to an option ("--root") is refused, as the user reads it; nothing when it
// is an existing folder.
[[nodiscard]] std::optional<QString> folderError(const QString &option, const QString &folder);

// The layout the options name; an empty text means the option was not given. A home alone
// keeps the real "/"; neither gives the real machine. Made once at start-up.
[[nodiscard]] SystemLayout layout(const QString &root, const QString &home);

} // namespace LayoutOptions
