// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <array>
#include <optional>

// The kind of place where a discovered item lives, in display order.
namespace FileCategories {
Q_NAMESPACE

enum class FileCategory {
    application,
    applicationSupport,
    containers,
    preferences,
    caches,
    webData,
    savedState,
    logs,
    launchAgents,
    launchDaemons,
    helperTools,
    receipts,
    temporary,
    homeFolder,
    other,
};
Q_ENUM_NS(FileCategory)

} // namespace FileCategories

using FileCategories::FileCategory;

// The category's display name ("Web Data & Cookies").
[[nodiscard]] QString displayName(FileCategory category);
// The category made from its display name; nothing for any other text.
[[nodiscard]] std::optional<FileCategory> fileCategoryFromDisplayName(const QString &name);
// The case name used in machine-readable output ("webData").
[[nodiscard]] QString caseName(FileCategory category);
// All fifteen categories in declaration order.
[[nodiscard]] const std::array<FileCategory, 15> &allFileCategories();
