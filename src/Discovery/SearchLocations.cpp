// SPDX-License-Identifier: MIT
#include "SearchLocations.h"

#include "Platform/SystemLayout.h"

namespace SearchLocations {

QList<Location> searchLocations(const SystemLayout &layout)
{
    using Rule = Location::Rule;
    using C = FileCategory;
    struct Row
    {
        const char16_t *macPath;
        FileCategory category;
        Rule rule;
        bool entersLinks = true;
    };
    static constexpr Row kRows[] = {
        {u"~/Library/Application Support", C::applicationSupport, Rule::vendorAware},
        {u"~/Library/Containers", C::containers, Rule::identifiers},
        {u"~/Library/Group Containers", C::containers, Rule::identifiers},
        {u"~/Library/Application Scripts", C::containers, Rule::identifiers},
        {u"~/Library/Preferences", C::preferences, Rule::vendorAware},
        {u"~/Library/Preferences/ByHost", C::preferences, Rule::identifiers},
        {u"~/Library/Caches", C::caches, Rule::vendorAware},
        {u"~/Library/Caches/com.apple.nsurlsessiond/Downloads", C::caches, Rule::identifiers},
        {u"~/Library/HTTPStorages", C::webData, Rule::identifiers},
        {u"~/Library/Cookies", C::webData, Rule::identifiers},
        {u"~/Library/WebKit", C::webData, Rule::identifiers},
        {u"~/Library/Saved Application State", C::savedState, Rule::identifiers},
        {u"~/Library/Application Support/com.apple.sharedfilelist/"
         u"com.apple.LSSharedFileList.ApplicationRecentDocuments",
         C::other, Rule::identifiers},
        {u"~/Library/Logs", C::logs, Rule::vendorAware},
        {u"~/Library/Logs/DiagnosticReports", C::logs, Rule::crashReports},
        {u"~/Library/Logs/DiagnosticReports/Retired", C::logs, Rule::crashReports},
        {u"~/Library/Application Support/CrashReporter", C::logs, Rule::crashReports},
        {u"~/Library/Internet Plug-Ins", C::other, Rule::identifiers},
        {u"~/Library/PreferencePanes", C::other, Rule::identifiers},
        {u"~/Library/Services", C::other, Rule::identifiers},
        {u"~/Library/Screen Savers", C::other, Rule::identifiers},
        {u"~/Library/Address Book Plug-Ins", C::other, Rule::identifiers},
        // Folders many apps share, one entry per app: crash reporters, file providers,
        // update caches, help indexes.
        {u"~/Library/Caches/com.plausiblelabs.crashreporter.data", C::caches, Rule::identifiers},
        {u"~/Library/Caches/SentryCrash", C::caches, Rule::identifiers},
        {u"~/Library/Application Support/com.crashlytics", C::logs, Rule::identifiers},
        {u"~/Library/Application Support/FileProvider", C::applicationSupport, Rule::identifiers},
        {u"~/Library/Application Support/CloudDocs", C::applicationSupport, Rule::identifiers},
        {u"~/Library/Application Support/Caches", C::caches, Rule::identifiers},
        {u"~/Library/Caches/com.apple.helpd/Generated", C::caches, Rule::identifiers},
        {u"~/Library/Caches/com.apple.helpd/SDMHelpData/Other/English/HelpSDMIndexFile", C::caches,
         Rule::identifiers},
        // Apps and vendors that keep a folder of their own beside the Library's.
        {u"~/Library", C::applicationSupport, Rule::vendorAware},
        {u"/Users/Shared", C::applicationSupport, Rule::vendorAware, false},
        {u"/Library/Application Support", C::applicationSupport, Rule::vendorAware},
        {u"/Library/Preferences", C::preferences, Rule::vendorAware},
        {u"/Library/Caches", C::caches, Rule::vendorAware},
        {u"/Library/Logs", C::logs, Rule::vendorAware},
        {u"/Library/Logs/DiagnosticReports", C::logs, Rule::crashReports},
        {u"/Library/PrivilegedHelperTools", C::helperTools, Rule::identifiers},
        {u"/Library/Internet Plug-Ins", C::other, Rule::identifiers},
        {u"/Library/PreferencePanes", C::other, Rule::identifiers},
        {u"/Library/Screen Savers", C::other, Rule::identifiers},
    };
    QList<Location> locations;
    for (const Row &row : kRows)
        locations.append({layout.path(QString::fromUtf16(row.macPath)), row.category, row.rule,
                          row.entersLinks});
    for (const QString &directory : layout.darwinUserDirectories())
        locations.append({directory, C::temporary, Rule::identifiers});
    return locations;
}

} // namespace SearchLocations
