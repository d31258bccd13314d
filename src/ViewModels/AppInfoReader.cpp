// SPDX-License-Identifier: MIT
#include "AppInfoReader.h"

#include "Platform/AppIcon.h"
#include "Platform/Bundle.h"
#include "Platform/SystemLayout.h"

#include <QFileInfo>

namespace AppInfoReader {

std::optional<AppInfo> read(const SystemLayout &layout, const QString &droppedPath)
{
    // A dropped link stands for what it points to: that is what is read, quit and removed
    // (the link goes too), never something that merely lies below the link's target.
    const QFileInfo dropped(droppedPath);
    const QString bundlePath = dropped.isSymLink() ? dropped.canonicalFilePath() : droppedPath;
    if (bundlePath.isEmpty())
        return std::nullopt;
    const auto bundle = Bundle::open(bundlePath);
    if (!bundle)
        return std::nullopt;
    const auto identifier = bundle->identifier();
    if (!identifier)
        return std::nullopt;
    AppInfo record;
    record.name = lastPathComponent(bundlePath);
    record.bundleIdentifier = *identifier;
    record.bundlePath = bundlePath;
    if (dropped.isSymLink())
        record.droppedLink = droppedPath;
    record.version = bundle->stringValue(QStringLiteral("CFBundleShortVersionString"));
    record.isSystemProtected =
        isUnderSystemFolder(layout, bundlePath) || layout.isInSystemFolder(bundlePath);
    return record;
}

std::optional<AppInfo> readWithIcon(const SystemLayout &layout, const QString &bundlePath,
                                    const std::function<QByteArray(const QByteArray &)> &shapeIcon)
{
    auto record = read(layout, bundlePath);
    if (!record)
        return record;
    if (const auto icon = AppIcon::extract(layout, bundlePath))
        record->icon = shapeIcon ? shapeIcon(*icon) : *icon;
    return record;
}

QString lastPathComponent(const QString &path)
{
    QString trimmed = path;
    while (trimmed.size() > 1 && trimmed.endsWith(QLatin1Char('/')))
        trimmed.chop(1);
    return trimmed.mid(trimmed.lastIndexOf(QLatin1Char('/')) + 1);
}

QString pathExtension(const QString &path)
{
    const QString component = lastPathComponent(path);
    const qsizetype dot = component.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? QString() : component.mid(dot + 1);
}

bool isUnderSystemFolder(const SystemLayout &layout, const QString &path)
{
    const QString resolved = QFileInfo(path).canonicalFilePath();
    if (resolved.isEmpty())
        return false;
    // The root itself may sit behind a link (/tmp on some systems): compare resolved with resolved.
    const QString root = QFileInfo(layout.root()).canonicalFilePath();
    const QString prefix =
        (root == QLatin1String("/") ? QString() : root) + QStringLiteral("/System/");
    return resolved.startsWith(prefix);
}

} // namespace AppInfoReader
