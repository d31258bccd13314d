// SPDX-License-Identifier: MIT
#include "LibraryScan.h"

#include "Discovery/FolderListing.h"
#include "Discovery/IdentifierText.h"
#include "Discovery/MatchRules.h"

#include <QFileInfo>
#include <algorithm>

using namespace IdentifierText;
using namespace Qt::StringLiterals;

namespace {
bool isDirectory(const QString &path, bool entersLinks)
{
    const QFileInfo info(path);
    return info.isDir() && (entersLinks || !info.isSymLink());
}

bool isVersion(QStringView text)
{
    return !text.isEmpty() && text.front().isDigit() &&
           std::all_of(text.cbegin(), text.cend(),
                       [](QChar c) { return c.isDigit() || c == QLatin1Char('.'); });
}
} // namespace

void LibraryScan::scan(const Location &location)
{
    const bool vendorAware =
        location.rule == Location::Rule::vendorAware && !m_fingerprint.vendor.isEmpty();
    for (const QString &name : FolderListing::names(location.path)) {
        // The system's own folders are never an app's, whatever the app is called.
        if (isSystemFolderName(name))
            continue;
        const QString path = location.path + QLatin1Char('/') + name;
        if (vendorAware) {
            if (isVendorFolder(name) && isDirectory(path, location.entersLinks)) {
                scanVendorFolder(path, location.category);
                continue;
            }
            if (!MatchRules::match(name, m_fingerprint, true) && isVendorNamedFolder(name) &&
                isDirectory(path, location.entersLinks)) {
                scanForAppItems(path, location.category);
                continue;
            }
        }
        const auto found = location.rule == Location::Rule::crashReports
                               ? MatchRules::matchCrashReport(name, m_fingerprint)
                               : MatchRules::match(name, m_fingerprint, true);
        if (found)
            m_results.add(
                DiscoveryResults::makeItem(path, location.category, *found, m_fingerprint));
    }
}

bool LibraryScan::isVendorFolder(const QString &name) const
{
    // "Acme", the vendor's web site "acme.com", or the vendor with a version ("Acme15").
    const QString lower = name.toLower();
    const QString &vendor = m_fingerprint.vendor;
    const bool named =
        lower == vendor || lower == m_fingerprint.vendorDomain ||
        (lower.startsWith(vendor) && isVersion(QStringView(lower).mid(vendor.size())));
    return named && !m_fingerprint.names.contains(normalizedName(name));
}

bool LibraryScan::isVendorNamedFolder(const QString &name) const
{
    return m_fingerprint.vendor.size() >= 4 &&
           normalizedName(name).startsWith(m_fingerprint.vendor);
}

void LibraryScan::scanVendorFolder(const QString &path, FileCategory category)
{
    if (m_fingerprint.vendorHasOtherApps()) {
        scanForAppItems(path, category);
        return;
    }
    m_results.add(DiscoveryResults::makeItem(
        path, category, Match::vendorOnly(u"vendor folder "_s + m_fingerprint.vendorDisplayName()),
        m_fingerprint));
}

void LibraryScan::scanForAppItems(const QString &folder, FileCategory category)
{
    const QString &shortName = m_fingerprint.shortName;
    for (const QString &name : FolderListing::names(folder)) {
        const bool isShortName = !shortName.isEmpty() && (normalizedName(name) == shortName ||
                                                          normalizedName(stem(name)) == shortName);
        std::optional<Match> found;
        if (isShortName)
            found = Match::exact(u"name "_s + shortName);
        else
            found = MatchRules::match(name, m_fingerprint, true);
        if (!found || found->kind == Match::Kind::vendorOnly || found->kind == Match::Kind::shared)
            continue;
        m_results.add(DiscoveryResults::makeItem(folder + QLatin1Char('/') + name, category, *found,
                                                 m_fingerprint));
    }
}
