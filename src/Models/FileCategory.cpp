// SPDX-License-Identifier: MIT
#include "FileCategory.h"

#include <QMetaEnum>

namespace {
struct CategoryName
{
    FileCategory category;
    const char *display;
};

constexpr std::array<CategoryName, 15> kNames{{
    {FileCategory::application, "Application"},
    {FileCategory::applicationSupport, "Application Support"},
    {FileCategory::containers, "Containers"},
    {FileCategory::preferences, "Preferences"},
    {FileCategory::caches, "Caches"},
    {FileCategory::webData, "Web Data & Cookies"},
    {FileCategory::savedState, "Saved State"},
    {FileCategory::logs, "Logs & Crash Reports"},
    {FileCategory::launchAgents, "Launch Agents"},
    {FileCategory::launchDaemons, "Launch Daemons"},
    {FileCategory::helperTools, "Helper Tools"},
    {FileCategory::receipts, "Installer Receipts"},
    {FileCategory::temporary, "Temporary Files"},
    {FileCategory::homeFolder, "Home Folder"},
    {FileCategory::other, "Other"},
}};
} // namespace

QString displayName(FileCategory category)
{
    return QString::fromUtf8(kNames.at(static_cast<std::size_t>(category)).display);
}

std::optional<FileCategory> fileCategoryFromDisplayName(const QString &name)
{
    for (const auto &entry : kNames) {
        if (name == QLatin1String(entry.display))
            return entry.category;
    }
    return std::nullopt;
}

QString caseName(FileCategory category)
{
    return QString::fromLatin1(
        QMetaEnum::fromType<FileCategory>().valueToKey(static_cast<int>(category)));
}

const std::array<FileCategory, 15> &allFileCategories()
{
    static const std::array<FileCategory, 15> all = [] {
        std::array<FileCategory, 15> result{};
        for (std::size_t i = 0; i < kNames.size(); ++i)
            result[i] = kNames[i].category;
        return result;
    }();
    return all;
}
