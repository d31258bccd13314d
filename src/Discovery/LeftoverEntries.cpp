// SPDX-License-Identifier: MIT
#include "LeftoverEntries.h"

#include "Discovery/FolderListing.h"
#include "Discovery/IdentifierText.h"
#include "Discovery/MatchRules.h"
#include "Discovery/OwnFolderScans.h"
#include "Discovery/SearchLocations.h"
#include "Platform/PropertyList.h"
#include "Platform/SystemLayout.h"

#include <QSet>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace LeftoverEntries {

namespace {
using Kind = LeftoverEntry::Kind;

bool isRegularFile(const QString &path)
{
    struct stat info
    {};
    return ::lstat(QFile::encodeName(path).constData(), &info) == 0 && S_ISREG(info.st_mode);
}

// The platform's own entries, and the folders the system keeps in the searched places
// (~/Library/LaunchAgents, Keychains, Mail, ...), which no app left behind.
bool isPlatformOwn(const QString &name, const LeftoverName &parsed)
{
    return parsed.identifier.startsWith(QLatin1String("com.apple.")) ||
           name.startsWith(QLatin1String("com.apple."), Qt::CaseInsensitive) ||
           IdentifierText::isSystemFolderName(name);
}

// "/Applications/Writer.app/Contents/MacOS/Writer" -> ROOT/Applications/Writer.app
QString bundleOf(const SystemLayout &layout, const QString &macProgram)
{
    const qsizetype end = macProgram.indexOf(QLatin1String(".app/"));
    return end < 0 ? QString() : layout.path(macProgram.left(end + 4));
}

// A folder named by one identifier that holds entries named by others (a crash reporter's
// cache with one folder per app) is shared by those apps, not one app's leftover.
bool isSharedByApps(const LeftoverEntry &entry)
{
    if (!entry.name.isIdentifier() || entry.kind != Kind::plain)
        return false;
    const QStringList names = FolderListing::names(entry.path);
    return std::any_of(names.cbegin(), names.cend(), [&](const QString &name) {
        const LeftoverName inner = LeftoverName::parse(name);
        return inner.isIdentifier() && inner.family != entry.name.family;
    });
}

class Collector
{
public:
    explicit Collector(const SystemLayout &layout) : m_layout(layout)
    {
        for (const Location &location : SearchLocations::searchLocations(layout))
            m_scanned.insert(location.path);
        m_ownData = layout.path(u"~/Library/Application Support/Quenzo"_s);
    }

    void addFolder(const QString &folder, FileCategory category, Kind kind, bool dotOnly = false)
    {
        for (const QString &name : FolderListing::names(folder)) {
            const QString path = folder + QLatin1Char('/') + name;
            if (m_scanned.contains(path) || path == m_ownData)
                continue;
            if (dotOnly && (name.size() < 2 || !name.startsWith(QLatin1Char('.')) ||
                            OwnFolderScans::sharedDotFolders().contains(name.toLower())))
                continue;
            LeftoverEntry entry{path, category, kind, LeftoverName::parse(name), {}, {}};
            if (isPlatformOwn(name, entry.name) || isSharedByApps(entry))
                continue;
            if (kind == Kind::launchJob && !readJob(entry))
                continue;
            if (kind == Kind::receipt && !readReceipt(name, entry))
                continue;
            m_entries.append(std::move(entry));
        }
    }

    [[nodiscard]] QList<LeftoverEntry> take() { return std::move(m_entries); }

private:
    bool readJob(LeftoverEntry &entry) const
    {
        if (!entry.path.endsWith(QLatin1String(".plist")))
            return false;
        // Only regular files are read: a FIFO planted here must not hang the search.
        const auto plist =
            isRegularFile(entry.path) ? PropertyList::readDictionary(entry.path) : std::nullopt;
        const QString label = plist ? plist->value(u"Label"_s).toString() : QString();
        if (const LeftoverName byLabel = LeftoverName::parse(label); byLabel.isIdentifier())
            entry.name = byLabel;
        for (const QString &program : MatchRules::programPaths(plist)) {
            if (const QString bundle = bundleOf(m_layout, program); !bundle.isEmpty())
                entry.programBundles.append(bundle);
        }
        return !isPlatformOwn(label, entry.name);
    }

    static bool readReceipt(const QString &name, LeftoverEntry &entry)
    {
        if (!name.endsWith(QLatin1String(".plist")))
            return false; // a bill of materials goes with its receipt
        entry.packageID = name.chopped(6);
        return true;
    }

    const SystemLayout &m_layout;
    QSet<QString> m_scanned;
    QString m_ownData;
    QList<LeftoverEntry> m_entries;
};
} // namespace

QList<LeftoverEntry> list(const SystemLayout &layout)
{
    Collector collector(layout);
    for (const Location &location : SearchLocations::searchLocations(layout)) {
        const Kind kind =
            location.category == FileCategory::containers ? Kind::container : Kind::plain;
        collector.addFolder(location.path, location.category, kind);
    }
    collector.addFolder(layout.path(u"~/Library/LaunchAgents"_s), FileCategory::launchAgents,
                        Kind::launchJob);
    collector.addFolder(layout.path(u"/Library/LaunchAgents"_s), FileCategory::launchAgents,
                        Kind::launchJob);
    collector.addFolder(layout.path(u"/Library/LaunchDaemons"_s), FileCategory::launchDaemons,
                        Kind::launchJob);
    collector.addFolder(layout.path(u"/private/var/db/receipts"_s), FileCategory::receipts,
                        Kind::receipt);
    collector.addFolder(layout.home(), FileCategory::homeFolder, Kind::plain, true);
    collector.addFolder(layout.path(u"~/.config"_s), FileCategory::homeFolder, Kind::plain);
    return collector.take();
}

} // namespace LeftoverEntries
