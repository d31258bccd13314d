// SPDX-License-Identifier: MIT
#include "InstalledAppClaims.h"

#include "Discovery/FingerprintBuilder.h"
#include "Discovery/IdentifierText.h"
#include "Discovery/InstalledApps.h"
#include "Discovery/ToolQueries.h"
#include "Platform/Bundle.h"
#include "Platform/SystemLayout.h"

#include <QFileInfo>

using namespace IdentifierText;

namespace {
// Names shorter than this are too common to claim or tie anything by themselves.
constexpr qsizetype kShortestName = 4;
// Names at least this long are distinct enough to claim an identifier that merely contains them.
constexpr qsizetype kContainedName = 6;

// "acme/tower" for com.acme.Tower3 and com.acme.Tower7: the same app in another version.
QString vendorApp(const LeftoverName &name)
{
    const QString word = name.appWord();
    return word.size() >= 3 ? name.vendor + QLatin1Char('/') + word : QString();
}
} // namespace

InstalledAppClaims InstalledAppClaims::find(const SystemLayout &layout, const ToolRunner &runner,
                                            const QStringList &idPrefixes)
{
    InstalledAppClaims claims;
    for (const InstalledApp &app : InstalledApps::find(layout, runner, QString(), idPrefixes)) {
        claims.addApp(app.path, app.identifier);
        const QString macPath = layout.macPath(app.path).value_or(app.path);
        for (const QString &id : ToolQueries::installerPackageIDs(layout, runner, macPath))
            claims.addIdentifier(id);
    }
    return claims;
}

void InstalledAppClaims::addApp(const QString &bundlePath, const QString &identifier)
{
    addIdentifier(identifier);
    for (const QString &group : FingerprintBuilder::appGroups(bundlePath))
        addIdentifier(group);
    addName(QFileInfo(bundlePath).completeBaseName());
    const auto bundle = Bundle::open(bundlePath);
    for (const char *key : {"CFBundleName", "CFBundleDisplayName", "CFBundleExecutable"}) {
        if (const auto value = bundle ? bundle->stringValue(QLatin1String(key)) : std::nullopt)
            addName(*value);
    }
    for (const QString &embedded : FingerprintBuilder::embeddedBundles(bundlePath)) {
        const auto inner = Bundle::open(embedded);
        if (const auto id = inner ? inner->identifier() : std::nullopt)
            addIdentifier(*id);
    }
}

void InstalledAppClaims::addIdentifier(const QString &identifier)
{
    const LeftoverName name = LeftoverName::parse(identifier);
    if (!name.isIdentifier()) {
        if (!isUsableIdentifier(identifier))
            return;
        m_identifiers.insert(identifier.toLower());
        // "Vendor.App": the first part names the vendor unless it is a top-level domain.
        if (const QString first = identifier.section(QLatin1Char('.'), 0, 0); first.size() > 3)
            for (const QString &vendor : LeftoverName::parse(first).leadingWords(kShortestName))
                m_vendors.insert(vendor);
        return;
    }
    m_identifiers.insert(name.identifier);
    m_identifiers.insert(name.family);
    // Some apps drop the top-level part in the names they write ("jetbrains.pycharm.2025").
    if (const QString rest = name.identifier.section(QLatin1Char('.'), 1);
        rest.contains(QLatin1Char('.')))
        m_identifiers.insert(rest);
    addName(name.appPart, false);
    if (!name.vendor.isEmpty()) {
        m_names.insert(name.vendor);
        m_vendors.insert(name.vendor);
        if (const QString app = vendorApp(name); !app.isEmpty())
            m_vendorApps.insert(app);
    }
}

void InstalledAppClaims::addName(const QString &name, bool isDisplayName)
{
    const LeftoverName words = LeftoverName::parse(name);
    const QString key = LeftoverName::nameKey(name);
    if (key.size() < kShortestName || genericNames().contains(key))
        return;
    m_names.insert(key);
    if (isDisplayName)
        m_displayNames.insert(key);
    for (const QString &prefix : words.leadingWords(kShortestName)) {
        m_namePrefixes.insert(prefix);
        if (isDisplayName)
            m_displayWords.insert(prefix);
    }
}

bool InstalledAppClaims::claims(const LeftoverName &name) const
{
    return name.isIdentifier() ? claimsIdentifier(name) : claimsWords(name);
}

bool InstalledAppClaims::claimsIdentifier(const LeftoverName &name) const
{
    // An installed identifier continued in any way ("com.acme.writer7", a version run on),
    // or one the entry's identifier starts.
    const bool related =
        std::any_of(m_identifiers.cbegin(), m_identifiers.cend(), [&](const QString &id) {
            return name.identifier.startsWith(id) || hasIdentifierPrefix(id, name.identifier);
        });
    const QString appPart = LeftoverName::nameKey(name.appPart);
    // "com.acme.Writer7" for Writer; "com.webex.x" while an app named Webex is installed.
    if (related || LeftoverName::parse(name.appPart).startsWithAny(m_displayWords) ||
        m_vendorApps.contains(vendorApp(name)) || m_displayNames.contains(name.vendor))
        return true;
    // An installed app's longer name inside the identifier: "com.getcleanshot.app" for
    // CleanShot. Vendors are left out: they name many apps.
    const auto inIdentifier = [&](const QString &text) {
        return text.size() >= kContainedName && !m_vendors.contains(text) &&
               (appPart.contains(text) || name.vendor.contains(text));
    };
    return std::any_of(m_displayWords.cbegin(), m_displayWords.cend(), inIdentifier);
}

bool InstalledAppClaims::claimsWords(const LeftoverName &name) const
{
    const QString whole = name.words.join(QString());
    return name.startsWithAny(m_names) || m_namePrefixes.contains(whole);
}

bool InstalledAppClaims::isInstalledBundle(const QString &path)
{
    return QFileInfo(path).isDir() && !path.contains(QLatin1String("/.Trash/"));
}
