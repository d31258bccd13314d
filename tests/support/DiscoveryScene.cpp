// SPDX-License-Identifier: MIT
#include "DiscoveryScene.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

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
    AppInfo record;
    record.name = QFileInfo(macPath).fileName();
    record.bundleIdentifier = identifier;
    record.bundlePath = m_mac.path(macPath);
    return record;
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

namespace {
QString field(const FileItem &item, const QString &key)
{
    if (key == u"category"_s)
        return caseName(item.category);
    if (key == u"size"_s)
        return QString::number(item.size);
    if (key == u"confidence"_s)
        return QString::number(item.confidence);
    if (key == u"note"_s)
        return item.note.value_or(QString());
    if (key == u"reason"_s)
        return item.reason;
    if (key == u"package"_s)
        return item.packageID.value_or(QString());
    if (key == u"protected"_s)
        return item.isProtected ? u"yes"_s : u"no"_s;
    return u"(no such key)"_s;
}
} // namespace

QStringList DiscoveryScene::shown(const QList<FileItem> &items, const QStringList &expected) const
{
    QHash<QString, QStringList> keys;
    for (const QString &line : expected) {
        QStringList &asked = keys[line.mid(4).section(u" | "_s, 0, 0)];
        for (const QString &pair : line.section(u" | "_s, 1).split(u"; "_s, Qt::SkipEmptyParts))
            asked.append(pair.section(u'=', 0, 0));
    }
    QStringList result;
    for (const FileItem &item : items) {
        const QString path = macPathOf(item.path);
        if (&item == &items.first() && !keys.contains(path))
            continue;
        QStringList fields;
        for (const QString &key : keys.value(path))
            fields.append(key + u'=' + field(item, key));
        result.append((item.isSelected ? u"[x] "_s : u"[ ] "_s) + path +
                      (fields.isEmpty() ? QString() : u" | "_s + fields.join(u"; "_s)));
    }
    return result;
}
