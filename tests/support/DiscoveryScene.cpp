// SPDX-License-Identifier: MIT
#include "DiscoveryScene.h"

#include <QFileInfo>

DiscoveryScene::DiscoveryScene() : m_mac(m_dir.path()) {}

AppInfo DiscoveryScene::addApp(const QString &macPath, const QString &identifier,
                               const QStringList &appGroups, const QVariantMap &info)
{
    FakeMac::App app;
    app.path = macPath;
    app.identifier = identifier;
    app.executable = QFileInfo(macPath).completeBaseName();
    app.appGroups = appGroups;
    app.info = info;
    m_mac.addApp(app);
    return appInfo(macPath, identifier);
}

AppInfo DiscoveryScene::appInfo(const QString &macPath, const QString &identifier) const
{
    AppInfo info;
    info.name = QFileInfo(macPath).fileName();
    info.bundleIdentifier = identifier;
    info.bundlePath = m_mac.path(macPath);
    return info;
}

QString DiscoveryScene::macPathOf(const QString &realPath) const
{
    if (realPath == m_mac.home() || realPath.startsWith(m_mac.home() + QLatin1Char('/')))
        return QLatin1Char('~') + realPath.mid(m_mac.home().size());
    if (realPath.startsWith(m_mac.root() + QLatin1Char('/')))
        return realPath.mid(m_mac.root().size());
    return realPath;
}

QStringList DiscoveryScene::macPaths(const QList<FileItem> &items) const
{
    QStringList paths;
    for (const FileItem &item : items)
        paths.append(macPathOf(item.path));
    return paths;
}

const FileItem *DiscoveryScene::find(const QList<FileItem> &items, const QString &macPath) const
{
    for (const FileItem &item : items) {
        if (macPathOf(item.path) == macPath)
            return &item;
    }
    return nullptr;
}
