// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

// Everything that identifies one app, condensed before any folder is scanned. Texts are
// lower-case except bundlePath and the app names in otherVendorAppNames and groupSharers.
struct Fingerprint
{
    QString bundlePath; // the real path, cleaned
    QString mainBundleID;
    QSet<QString> bundleIDs;
    QSet<QString> groupIDs;
    QSet<QString> packageIDs;
    QSet<QString> names;
    QSet<QString> shortenedNames;         // those of `names` made by dropping a vendor or kind word
    QMap<QString, QString> nameSpellings; // normalised name -> as the app writes it
    QSet<QString> executableNames;
    QSet<QString> crashReportNames;
    QString vendor;             // empty when the identifier names no real vendor
    QString vendorPrefix;       // "com.acme." when vendor is set
    QString vendorDomain;       // "acme.com" when vendor is set: folders named after the web site
    QString shortName;          // empty when unusable
    bool isPlatformApp = false; // the app is itself in the platform's namespace (com.apple.)
    QSet<QString> otherAppIDs;
    QSet<QString> otherAppNames;             // every other installed app's names, normalised
    QStringList otherVendorAppNames;         // sorted
    QMap<QString, QStringList> groupSharers; // group -> other apps holding it, sorted

    // bundleIDs, groupIDs and packageIDs, longest first, ties in plain text order: where the
    // first identifier that fits decides, the most specific one does, and never a hash order.
    QStringList identifiers;

    [[nodiscard]] bool isOwnIdentifier(const QString &id) const
    {
        return bundleIDs.contains(id) || groupIDs.contains(id) || packageIDs.contains(id);
    }
    // The name as the app writes it ("Writer" for "writer"), else as given.
    [[nodiscard]] QString spelledName(const QString &name) const
    {
        return nameSpellings.value(name, name);
    }
    // vendor (or "vendor") with its first letter upper-case: "Acme".
    [[nodiscard]] QString vendorDisplayName() const;
    [[nodiscard]] bool vendorHasOtherApps() const { return !otherVendorAppNames.isEmpty(); }

    // Fills `identifiers` from the three sets.
    void orderIdentifiers();
};
