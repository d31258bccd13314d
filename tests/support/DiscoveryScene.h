// SPDX-License-Identifier: MIT
#pragma once

#include "Models/AppInfo.h"
#include "Models/FileItem.h"
#include "fakemac/FakeMac.h"

#include <QStringList>
#include <QTemporaryDir>

// A fresh fake Mac with helpers to describe apps and read discovery results in Mac terms
// ("~/Library/Caches/x", "/Library/LaunchDaemons/y.plist").
class DiscoveryScene
{
public:
    DiscoveryScene();

    FakeMac &mac() { return m_mac; }
    [[nodiscard]] SystemLayout layout() const { return m_mac.layout(); }
    // Adds the app (executable named after the bundle) and returns its record as the controller
    // would make it.
    AppInfo addApp(const QString &macPath, const QString &identifier,
                   const QStringList &appGroups = {}, const QVariantMap &info = {});

    // The Mac path ("~/..." under the home) of a real path.
    [[nodiscard]] QString macPathOf(const QString &realPath) const;
    [[nodiscard]] QStringList macPaths(const QList<FileItem> &items) const;
    // The items as the expected lines write them: "[x] path" for a selected item, "[ ] path" for
    // one left to the user, then " | key=value; ..." with the fields the expected line of that
    // path asks for (category, size, confidence, note, reason, package, protected). The first
    // item (the bundle) only when expected lists it.
    [[nodiscard]] QStringList shown(const QList<FileItem> &items,
                                    const QStringList &expected) const;

private:
    QTemporaryDir m_dir;
    FakeMac m_mac;
};
