// SPDX-License-Identifier: MIT
#include "FingerprintBuilder.h"

#include "Discovery/IdentifierText.h"
#include "Discovery/InstalledApps.h"
#include "Discovery/ToolQueries.h"
#include "Platform/Bundle.h"
#include "Platform/MachOReader.h"
#include "Platform/SystemLayout.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

using namespace IdentifierText;

namespace {
QStringList lowered(const QStringList &texts)
{
    QStringList result;
    for (const QString &text : texts)
        result.append(text.toLower());
    return result;
}

void keepUsable(QSet<QString> &ids)
{
    ids.removeIf([](const QString &id) { return !isUsableIdentifier(id); });
}

QString stringValue(const QVariantMap &info, const char *key)
{
    const QVariant value = info.value(QLatin1String(key));
    return value.typeId() == QMetaType::QString ? value.toString() : QString();
}
} // namespace

QStringList FingerprintBuilder::appGroups(const QString &bundlePath)
{
    const auto bundle = Bundle::open(bundlePath);
    if (!bundle)
        return {};
    const auto executable = bundle->executablePath();
    return executable ? MachOReader::applicationGroups(*executable) : QStringList();
}

QStringList FingerprintBuilder::embeddedBundles(const QString &bundlePath)
{
    static const char *const kFolders[] = {"Contents/Library/LoginItems",
                                           "Contents/PlugIns",
                                           "Contents/XPCServices",
                                           "Contents/Library/SystemExtensions",
                                           "Contents/Helpers",
                                           "Contents/Frameworks",
                                           "Contents/MacOS"};
    static const QStringList kExtensions{QStringLiteral("app"), QStringLiteral("appex"),
                                         QStringLiteral("xpc"), QStringLiteral("systemextension")};
    QStringList bundles;
    for (const char *folder : kFolders) {
        const QDir dir(bundlePath + QLatin1Char('/') + QLatin1String(folder));
        const QStringList names = dir.entryList(
            QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
        for (const QString &name : names) {
            if (kExtensions.contains(QFileInfo(name).suffix().toLower()))
                bundles.append(dir.filePath(name));
        }
    }
    return bundles;
}

void FingerprintBuilder::addEmbedded(const QString &bundlePath, Fingerprint &fingerprint) const
{
    const QString &mainID = fingerprint.mainBundleID;
    for (const QString &path : embeddedBundles(bundlePath)) {
        const auto bundle = Bundle::open(path);
        const auto identifier = bundle ? bundle->identifier() : std::nullopt;
        if (!identifier)
            continue;
        const QString id = identifier->toLower();
        if (!isSameVendor(id, mainID, fingerprint.vendorPrefix))
            continue;
        fingerprint.bundleIDs.insert(id);
        for (const QString &group : lowered(appGroups(path)))
            fingerprint.groupIDs.insert(group);
        if (const auto executable = bundle->stringValue(QStringLiteral("CFBundleExecutable")))
            fingerprint.executableNames.insert(executable->toLower());
    }
    // Privileged helpers are named after their identifier.
    const QStringList helpers =
        QDir(bundlePath + QStringLiteral("/Contents/Library/LaunchServices"))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                       QDir::Name);
    for (const QString &helper : helpers) {
        const QString id = helper.toLower();
        if (isSameVendor(id, mainID, fingerprint.vendorPrefix))
            fingerprint.bundleIDs.insert(id);
    }
}

void FingerprintBuilder::addNames(const AppInfo &app, const QVariantMap &info,
                                  Fingerprint &fingerprint) const
{
    QStringList candidates{QString(app.name).remove(QStringLiteral(".app"))};
    for (const char *key : {"CFBundleName", "CFBundleDisplayName", "CFBundleExecutable"}) {
        if (const QString value = stringValue(info, key); !value.isNull())
            candidates.append(value);
    }
    for (const QString &candidate : std::as_const(candidates)) {
        QString trimmed = candidate;
        while (trimmed.startsWith(QLatin1Char(' ')) || trimmed.startsWith(QLatin1Char('\t')))
            trimmed.remove(0, 1);
        while (trimmed.endsWith(QLatin1Char(' ')) || trimmed.endsWith(QLatin1Char('\t')))
            trimmed.chop(1);
        if (const QString name = normalizedName(trimmed); isNameWorthy(name)) {
            fingerprint.names.insert(name);
            if (!fingerprint.nameSpellings.contains(name))
                fingerprint.nameSpellings.insert(name, trimmed);
        }
        for (const QString &name : shortenedNames(trimmed, fingerprint.vendor)) {
            if (!fingerprint.names.contains(name))
                fingerprint.shortenedNames.insert(name);
        }
        if (const QString lower = candidate.toLower(); isNameWorthy(lower))
            fingerprint.crashReportNames.insert(lower);
    }
    fingerprint.executableNames.removeIf([](const QString &n) { return !isNameWorthy(n); });
}

void FingerprintBuilder::addInstalledApps(const QStringList &parts, Fingerprint &fingerprint) const
{
    const QString namespacePrefix =
        parts.size() >= 3 ? parts.at(0) + QLatin1Char('.') + parts.at(1) + QLatin1Char('.')
                          : QString();
    QStringList idPrefixes{fingerprint.mainBundleID};
    if (!namespacePrefix.isEmpty())
        idPrefixes.prepend(namespacePrefix);
    for (const InstalledApp &other :
         InstalledApps::find(m_layout, m_runner, fingerprint.bundlePath, idPrefixes)) {
        const QString id = other.identifier.toLower();
        if (id == fingerprint.mainBundleID)
            continue; // another copy of the same app
        fingerprint.otherAppIDs.insert(id);
        const QString name = QFileInfo(other.path).completeBaseName();
        const QStringList otherParts = id.split(QLatin1Char('.'));
        const QString otherVendor = otherParts.size() >= 3 ? otherParts.at(1) : QString();
        if (const QString key = normalizedName(name); isNameWorthy(key))
            fingerprint.otherAppNames.insert(key);
        for (const QString &key : shortenedNames(name, otherVendor))
            fingerprint.otherAppNames.insert(key);
        const bool sameNamespace = !namespacePrefix.isEmpty() && id.startsWith(namespacePrefix);
        if (sameNamespace)
            fingerprint.otherVendorAppNames.append(name);
        // A group is shared whoever signs it: apps of other namespaces hold groups too.
        if (fingerprint.groupIDs.isEmpty())
            continue;
        for (const QString &group : lowered(appGroups(other.path))) {
            if (fingerprint.groupIDs.contains(group))
                fingerprint.groupSharers[group].append(name);
        }
    }
}

Fingerprint FingerprintBuilder::build(const AppInfo &app) const
{
    Fingerprint fp;
    fp.bundlePath = QDir::cleanPath(app.bundlePath);
    fp.mainBundleID = app.bundleIdentifier.toLower();
    const auto bundle = Bundle::open(fp.bundlePath);
    const QVariantMap info = bundle ? bundle->infoDictionary() : QVariantMap();

    const QStringList parts = fp.mainBundleID.split(QLatin1Char('.'), Qt::SkipEmptyParts);
    if (parts.size() >= 3 && parts.at(1).size() >= 3 && !sharedNamespaces().contains(parts.at(1))) {
        fp.vendor = parts.at(1);
        fp.vendorPrefix = parts.at(0) + QLatin1Char('.') + parts.at(1) + QLatin1Char('.');
        fp.vendorDomain = parts.at(1) + QLatin1Char('.') + parts.at(0);
    }
    fp.isPlatformApp = fp.mainBundleID.startsWith(QLatin1String("com.apple."));
    fp.bundleIDs.insert(fp.mainBundleID);
    for (const QString &group : lowered(appGroups(fp.bundlePath)))
        fp.groupIDs.insert(group);
    if (const QString executable = stringValue(info, "CFBundleExecutable"); !executable.isNull())
        fp.executableNames.insert(executable.toLower());
    addEmbedded(fp.bundlePath, fp);
    keepUsable(fp.bundleIDs);
    keepUsable(fp.groupIDs);
    addNames(app, info, fp);
    if (parts.size() >= 3 && isNameWorthy(parts.last()))
        fp.shortName = parts.last();
    addInstalledApps(parts, fp);
    // "Cloudflare WARP" answers to "warp" only while no installed app is called so.
    for (const QString &name : std::as_const(fp.shortenedNames)) {
        if (!fp.otherAppNames.contains(name))
            fp.names.insert(name);
    }
    const QString macPath = m_layout.macPath(fp.bundlePath).value_or(fp.bundlePath);
    for (const QString &id : ToolQueries::installerPackageIDs(m_layout, m_runner, macPath))
        fp.packageIDs.insert(id.toLower());
    std::sort(fp.otherVendorAppNames.begin(), fp.otherVendorAppNames.end());
    for (QStringList &sharers : fp.groupSharers)
        std::sort(sharers.begin(), sharers.end());
    fp.orderIdentifiers();
    return fp;
}
