// SPDX-License-Identifier: MIT
#include "Bundle.h"

#include "LogCategories.h"
#include "PropertyList.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QMetaType>

std::optional<Bundle> Bundle::open(const QString &path)
{
    if (path.isEmpty() || !QFileInfo(path).isDir())
        return std::nullopt;
    auto info = PropertyList::readDictionary(path + QStringLiteral("/Contents/Info.plist"));
    if (!info)
        qCDebug(lcPlatform) << "bundle without a readable Info.plist dictionary:" << path;
    return Bundle(path, info.value_or(QVariantMap()));
}

std::optional<QString> Bundle::identifier() const
{
    auto identifier = stringValue(QStringLiteral("CFBundleIdentifier"));
    if (!identifier || identifier->isEmpty())
        return std::nullopt;
    return identifier;
}

std::optional<QString> Bundle::stringValue(const QString &key) const
{
    const auto it = m_info.constFind(key);
    if (it == m_info.cend() || it->typeId() != QMetaType::QString)
        return std::nullopt;
    return it->toString();
}

std::optional<QString> Bundle::executablePath() const
{
    const auto executable = stringValue(QStringLiteral("CFBundleExecutable"));
    if (!executable || executable->isEmpty())
        return std::nullopt;
    return m_path + QStringLiteral("/Contents/MacOS/") + *executable;
}

std::optional<QString> Bundle::enclosingBundlePath(const QString &executablePath)
{
    // X.app/Contents/MacOS/<executable>
    const QDir macOS = QFileInfo(executablePath).absoluteDir();
    if (macOS.dirName() != QLatin1String("MacOS"))
        return std::nullopt;
    const QString contents = QFileInfo(macOS.absolutePath()).absolutePath();
    if (QFileInfo(contents).fileName() != QLatin1String("Contents"))
        return std::nullopt;
    const QString bundle = QFileInfo(contents).absolutePath();
    if (!bundle.endsWith(QLatin1String(".app")))
        return std::nullopt;
    return bundle;
}

std::optional<QString> Bundle::mainBundleIdentifier()
{
    if (!QCoreApplication::instance())
        return std::nullopt;
    const auto bundlePath = enclosingBundlePath(QCoreApplication::applicationFilePath());
    if (!bundlePath)
        return std::nullopt;
    const auto bundle = open(*bundlePath);
    return bundle ? bundle->identifier() : std::nullopt;
}
