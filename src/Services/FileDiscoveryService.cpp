// SPDX-License-Identifier: MIT
#include "FileDiscoveryService.h"

#include "Platform/SystemLayout.h"

#include <QFile>

FileDiscoveryService::FileDiscoveryService() = default;

QList<FileItem> FileDiscoveryService::discoverFiles(const AppInfo &app) const
{
    FileItem bundle;
    bundle.path = app.bundlePath;
    bundle.category = FileCategory::application;
    bundle.isSelected = !app.isSystemProtected;
    bundle.isProtected = app.isSystemProtected;
    if (app.isSystemProtected)
        bundle.note = QStringLiteral("Part of macOS");
    return {bundle};
}

bool FileDiscoveryService::hasFullDiskAccess()
{
    QFile database(
        SystemLayout::path(QStringLiteral("/Library/Application Support/com.apple.TCC/TCC.db")));
    return database.open(QIODevice::ReadOnly);
}
