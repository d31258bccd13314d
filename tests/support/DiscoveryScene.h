// SPDX-License-Identifier: MIT
#pragma once

#include "Models/AppInfo.h"
#include "Models/FileItem.h"
#include "fakemac/FakeMac.h"

#include <QStringList>
#include <QTemporaryDir>

// A fresh fake Mac made current, with helpers to describe apps and read discovery results in
// Mac terms ("~/Library/Caches/x", "/Library/LaunchDaemons/y.plist").
class DiscoveryScene
{
public:
    DiscoveryScene();

    FakeMac &mac() { return m_mac; }
    [[nodiscard]] SystemLayout layout() const { return m_mac.layout(); }
    // Adds the app (executable named after the bundle) and returns its record.
    AppInfo addApp(const QString &macPath, const QString &identifier,
                   const QStringList &appGroups = {}, const QVariantMap &info = {});
    // The record of a bundle as the controller would make it.
    [[nodiscard]] AppInfo appInfo(const QString &macPath, const QString &identifier) const;

    // The Mac path ("~/..." under the home) of a real path.
    [[nodiscard]] QString macPathOf(const QString &realPath) const;
    [[nodiscard]] QStringList macPaths(const QList<FileItem> &items) const;
    // The item at a Mac path, or nullptr.
    [[nodiscard]] const FileItem *find(const QList<FileItem> &items, const QString &macPath) const;

private:
    QTemporaryDir m_dir;
    FakeMac m_mac;
};
