// SPDX-License-Identifier: MIT
#pragma once

#include "Discovery/LeftoverName.h"

#include <QSet>
#include <QString>
#include <QStringList>

class SystemLayout;
class ToolRunner;

// What the installed apps lay claim to: their identifiers (bundles, the bundles they carry, app
// groups, installer packages) and their names. An entry any installed app may own is never a
// leftover of a deleted one, so the claims are generous on purpose.
class InstalledAppClaims
{
public:
    // The apps of the Applications folders and those the metadata index finds for `idPrefixes`.
    [[nodiscard]] static InstalledAppClaims
    find(const SystemLayout &layout, const ToolRunner &runner, const QStringList &idPrefixes);

    void addApp(const QString &bundlePath, const QString &identifier);
    void addIdentifier(const QString &identifier);
    // Identifier parts are names too, but only a display name is distinct enough to be looked
    // for inside other identifiers.
    void addName(const QString &name, bool isDisplayName = true);

    // By identifier or name; a part any app of a vendor may have is judged by hasVendor.
    [[nodiscard]] bool claims(const LeftoverName &name) const;
    // Whether an installed app's identifier carries this vendor.
    [[nodiscard]] bool hasVendor(const QString &vendor) const { return m_vendors.contains(vendor); }
    // A bundle that exists and is not in a Trash: a job that runs it belongs to an installed app.
    [[nodiscard]] static bool isInstalledBundle(const QString &path);

private:
    [[nodiscard]] bool claimsIdentifier(const LeftoverName &name) const;
    [[nodiscard]] bool claimsWords(const LeftoverName &name) const;

    QSet<QString> m_identifiers; // also without their first part: "jetbrains.pycharm"
    QSet<QString> m_vendors;
    QSet<QString> m_vendorApps;   // "vendor/first word of the app part"
    QSet<QString> m_names;        // name keys, vendors included
    QSet<QString> m_namePrefixes; // leading words of the names: "docker" of Docker Desktop
    QSet<QString> m_displayNames; // name keys of the apps' display names
    QSet<QString> m_displayWords; // and their leading words
};
