// SPDX-License-Identifier: MIT
#pragma once

#include "Discovery/Fingerprint.h"
#include "Models/AppInfo.h"
#include "Platform/SystemLayout.h"

#include <QStringList>

class ToolRunner;

// Condenses what identifies an app into its Fingerprint: the identifiers of the app and of
// the same-vendor bundles and helpers it carries, its app groups, its installer packages, its
// names, its vendor, and the other installed apps (which keep what they share with it).
class FingerprintBuilder
{
public:
    FingerprintBuilder(SystemLayout layout, const ToolRunner &runner)
        : m_layout(std::move(layout)), m_runner(runner)
    {}

    [[nodiscard]] Fingerprint build(const AppInfo &app) const;

    // The app groups of a bundle's main executable; empty when unsigned or unreadable.
    [[nodiscard]] static QStringList appGroups(const QString &bundlePath);
    // The bundles directly inside the folders where apps carry helpers and extensions.
    [[nodiscard]] static QStringList embeddedBundles(const QString &bundlePath);

private:
    void addEmbedded(const QString &bundlePath, Fingerprint &fingerprint) const;
    void addNames(const AppInfo &app, const QVariantMap &info, Fingerprint &fingerprint) const;
    void addInstalledApps(const QStringList &parts, Fingerprint &fingerprint) const;

    SystemLayout m_layout;
    const ToolRunner &m_runner;
};
