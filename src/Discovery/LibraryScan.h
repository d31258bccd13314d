// SPDX-License-Identifier: MIT
#pragma once

#include "Discovery/DiscoveryResults.h"
#include "Discovery/SearchLocations.h"

// Judges the entries of one search location, one level deep (a vendor folder one more).
class LibraryScan
{
public:
    LibraryScan(const Fingerprint &fingerprint, DiscoveryResults &results)
        : m_fingerprint(fingerprint), m_results(results)
    {}

    void scan(const Location &location);

private:
    // A folder named exactly like the vendor, for an app that is not itself called so.
    [[nodiscard]] bool isVendorFolder(const QString &name) const;
    // "Acme Tools", "AcmeData" for vendor acme; vendors shorter than four letters never.
    [[nodiscard]] bool isVendorNamedFolder(const QString &name) const;
    // Whole when no other app of the vendor is installed, else only the app's own entries.
    void scanVendorFolder(const QString &path, FileCategory category);
    void scanForAppItems(const QString &folder, FileCategory category);

    const Fingerprint &m_fingerprint;
    DiscoveryResults &m_results;
};
