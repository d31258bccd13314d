// SPDX-License-Identifier: MIT
#include "OrphanFinder.h"

#include "Discovery/DiscoveryResults.h"
#include "Discovery/IdentifierText.h"
#include "Discovery/InstalledAppClaims.h"
#include "Discovery/LeftoverEntries.h"
#include "Discovery/SizeMeasurer.h"
#include "Platform/ToolRunner.h"

#include <QFileInfo>
#include <QMap>
#include <algorithm>

namespace {
using Kind = LeftoverEntry::Kind;

// One app's leftovers while they are gathered.
struct Gathering
{
    QList<LeftoverEntry> entries;
    QString name;
    QString vendor;
    QSet<QString> nameKeys;
    bool hasStrongEvidence = false; // a receipt, container or launch job of the family
    bool isApp = false;             // something only apps leave: saved state, recent documents
    QSet<QString> folders;          // where its entries lie

    // Entries in several folders: an app's preferences and caches, not one file of a helper.
    [[nodiscard]] bool isSpread() const { return folders.size() >= 2; }
};

// A name only an app (not a helper or a framework) leaves behind.
bool isAppEvidence(const LeftoverEntry &entry)
{
    return entry.kind != Kind::plain || entry.category == FileCategory::savedState ||
           entry.path.contains(QLatin1String("ApplicationRecentDocuments/"));
}

// "Dash" for an app whose identifier says dashdoc: a plain name that the app's name continues.
bool isShortFor(const LeftoverName &name, const QSet<QString> &nameKeys)
{
    const QString whole = name.words.join(QString());
    return whole.size() >= 4 &&
           std::any_of(nameKeys.cbegin(), nameKeys.cend(),
                       [&](const QString &key) { return key.startsWith(whole); });
}

bool isNameKey(const QString &key)
{
    return key.size() >= 4 && key.at(0).isLetter() && !IdentifierText::genericNames().contains(key);
}

QStringList vendorPrefixes(const QList<LeftoverEntry> &entries)
{
    QSet<QString> prefixes;
    for (const LeftoverEntry &entry : entries) {
        if (entry.name.isIdentifier())
            prefixes.insert(entry.name.family.section(QLatin1Char('.'), 0, 1) + QLatin1Char('.'));
    }
    QStringList sorted(prefixes.cbegin(), prefixes.cend());
    std::sort(sorted.begin(), sorted.end());
    return sorted;
}

bool runsInstalledApp(const LeftoverEntry &entry)
{
    return std::any_of(entry.programBundles.cbegin(), entry.programBundles.cend(),
                       InstalledAppClaims::isInstalledBundle);
}

QString reason(const LeftoverEntry &entry, const Gathering &group, bool byVendor)
{
    if (!entry.name.isIdentifier() || byVendor)
        return byVendor
                   ? QStringLiteral("Named after the vendor %1, none of whose apps is installed")
                         .arg(group.vendor)
                   : QStringLiteral("Named like %1, which is no longer installed").arg(group.name);
    const QString id = entry.name.identifier;
    switch (entry.kind) {
    case Kind::receipt:
        return QStringLiteral("Installer receipt of %1; no installed app came from it").arg(id);
    case Kind::container:
        return QStringLiteral("Container of %1, which no installed app has").arg(id);
    case Kind::launchJob:
        if (!entry.programBundles.isEmpty())
            return QStringLiteral("Launch job %1; the app it starts is gone").arg(id);
        return QStringLiteral("Launch job %1, which no installed app has").arg(id);
    case Kind::plain:
        break;
    }
    return QStringLiteral("Named after %1, which no installed app has").arg(id);
}

FileItem makeItem(const LeftoverEntry &entry, const Gathering &group, bool byVendor)
{
    FileItem item;
    item.path = entry.path;
    item.category = entry.category;
    item.size = SizeMeasurer::itemSize(entry.path);
    item.isWritable = QFileInfo(entry.path).isWritable();
    if (entry.kind == Kind::receipt) {
        item.packageID = entry.packageID;
        item.size += SizeMeasurer::itemSize(entry.path.chopped(6) + QLatin1String(".bom"));
    }
    item.isSelected = !byVendor && entry.name.isIdentifier() && group.hasStrongEvidence;
    item.confidence = item.isSelected ? 0.9 : 0.5;
    item.note = reason(entry, group, byVendor);
    return item;
}

class Grouping
{
public:
    explicit Grouping(const InstalledAppClaims &claims) : m_claims(claims) {}

    void addIdentified(const LeftoverEntry &entry, bool asApp = false)
    {
        // A job that starts a gone app is that app's, whatever its name says, unless another
        // app of the vendor is installed and may share it.
        const bool startsGoneApp =
            !entry.programBundles.isEmpty() && !m_claims.hasVendor(entry.name.vendor);
        if (entry.name.isVendorWide() && !startsGoneApp && !asApp) {
            m_vendorWide.append(entry);
            return;
        }
        Gathering &group = m_families[entry.name.family];
        if (group.name.isEmpty()) {
            group.name = entry.name.appName();
            group.vendor = entry.name.vendor;
            // "Signal" and "Signal Desktop" for org.whispersystems.signal-desktop.
            const LeftoverName words = LeftoverName::parse(group.name);
            for (const QString &key : words.leadingWords(4)) {
                if (isNameKey(key))
                    group.nameKeys.insert(key);
            }
            if (const QString key = LeftoverName::nameKey(group.name); key.size() >= 3)
                group.nameKeys.insert(key);
        }
        for (const QString &bundle : entry.programBundles) {
            const QString appName = QFileInfo(bundle).completeBaseName();
            group.name = appName; // the app's own name beats a part of its identifier
            group.nameKeys.insert(LeftoverName::nameKey(appName));
        }
        group.hasStrongEvidence = group.hasStrongEvidence || entry.kind != Kind::plain;
        group.isApp = group.isApp || isAppEvidence(entry);
        group.folders.insert(entry.path.left(entry.path.lastIndexOf(QLatin1Char('/'))));
        group.entries.append(entry);
    }

    // Where an installed app shares the vendor, only what an app of its own left is listed:
    // the rest may well be the installed app's.
    void dropVendorParts()
    {
        m_families.removeIf([&](const auto &it) {
            return m_claims.hasVendor(it.value().vendor) && !it.value().isApp &&
                   !it.value().isSpread();
        });
        // A vendor's part named after a gone app goes with it ("com.acme.WriterUpdater" with
        // com.acme.writer); any other is left to the installed apps of the vendor.
        for (const LeftoverEntry &entry : std::as_const(m_vendorWide)) {
            const LeftoverName appPart = LeftoverName::parse(entry.name.appPart);
            const auto owner =
                std::find_if(m_families.cbegin(), m_families.cend(), [&](const auto &g) {
                    return g.vendor == entry.name.vendor && appPart.startsWithAny(g.nameKeys);
                });
            if (owner != m_families.cend())
                m_plain[owner.key()].append(entry);
            else if (!m_claims.hasVendor(entry.name.vendor) &&
                     !addByVendor(entry, entry.name.vendor) && entry.kind != Kind::plain)
                addIdentified(entry, true); // a container or job: the part is an app itself
        }
    }

    // A plain name joins the app whose name it starts with, else the app(s) of its vendor; a
    // name that ties to nothing is not listed.
    void addPlain(const LeftoverEntry &entry)
    {
        for (auto it = m_families.begin(); it != m_families.end(); ++it) {
            if (entry.name.startsWithAny(it->nameKeys) || isShortFor(entry.name, it->nameKeys)) {
                m_plain[it.key()].append(entry);
                return;
            }
        }
        for (auto it = m_families.cbegin(); it != m_families.cend(); ++it) {
            if (!it->vendor.isEmpty() && entry.name.startsWithAny({it->vendor})) {
                addByVendor(entry, it->vendor);
                return;
            }
        }
    }

    [[nodiscard]] QList<OrphanGroup> groups() const
    {
        QList<OrphanGroup> result;
        for (auto it = m_families.cbegin(); it != m_families.cend(); ++it) {
            OrphanGroup group{it->name, it.key(), {}};
            for (const LeftoverEntry &entry : it->entries)
                group.items.append(makeItem(entry, *it, false));
            for (const LeftoverEntry &entry : m_plain.value(it.key()))
                group.items.append(makeItem(entry, *it, false));
            for (const LeftoverEntry &entry : m_byVendor.value(it.key()))
                group.items.append(makeItem(entry, *it, true));
            result.append(std::move(group));
        }
        for (auto it = m_vendorOnly.cbegin(); it != m_vendorOnly.cend(); ++it) {
            Gathering vendor;
            vendor.vendor = it.key();
            OrphanGroup group{it.key().left(1).toUpper() + it.key().mid(1), {}, {}};
            for (const LeftoverEntry &entry : *it)
                group.items.append(makeItem(entry, vendor, true));
            result.append(std::move(group));
        }
        for (OrphanGroup &group : result)
            std::sort(group.items.begin(), group.items.end(),
                      [](const FileItem &a, const FileItem &b) { return a.path < b.path; });
        std::sort(result.begin(), result.end(), [](const OrphanGroup &a, const OrphanGroup &b) {
            const int order = a.name.compare(b.name, Qt::CaseInsensitive);
            return order != 0 ? order < 0 : a.identifier < b.identifier;
        });
        return result;
    }

private:
    // To the vendor's only app, or to a group of the vendor's own when several apps are gone.
    // False when no gone app of the vendor is known.
    bool addByVendor(const LeftoverEntry &entry, const QString &vendor)
    {
        QStringList families;
        for (auto it = m_families.cbegin(); it != m_families.cend(); ++it) {
            if (it->vendor == vendor)
                families.append(it.key());
        }
        if (families.size() == 1)
            m_byVendor[families.first()].append(entry);
        else if (!families.isEmpty())
            m_vendorOnly[vendor].append(entry);
        return !families.isEmpty();
    }

    const InstalledAppClaims &m_claims;
    QList<LeftoverEntry> m_vendorWide;
    QMap<QString, Gathering> m_families;
    QMap<QString, QList<LeftoverEntry>> m_plain;
    QMap<QString, QList<LeftoverEntry>> m_byVendor;
    QMap<QString, QList<LeftoverEntry>> m_vendorOnly;
};
} // namespace

OrphanFinder::OrphanFinder(SystemLayout layout, std::shared_ptr<const ToolRunner> runner)
    : m_layout(std::move(layout)),
      m_runner(runner ? std::move(runner) : std::make_shared<const ToolRunner>())
{}

QList<OrphanGroup> OrphanFinder::find() const
{
    const QList<LeftoverEntry> entries = LeftoverEntries::list(m_layout);
    const InstalledAppClaims claims =
        InstalledAppClaims::find(m_layout, *m_runner, vendorPrefixes(entries));
    Grouping grouping(claims);
    QList<LeftoverEntry> plain;
    for (const LeftoverEntry &entry : entries) {
        if (runsInstalledApp(entry) || claims.claims(entry.name))
            continue;
        if (entry.name.isIdentifier())
            grouping.addIdentified(entry);
        else
            plain.append(entry);
    }
    grouping.dropVendorParts();
    // Plain names tie to the apps the identifiers revealed, so they come after all of those.
    for (const LeftoverEntry &entry : std::as_const(plain))
        grouping.addPlain(entry);
    QList<OrphanGroup> groups = grouping.groups();
    for (OrphanGroup &group : groups)
        describePlaces(group.items, m_layout);
    return groups;
}
