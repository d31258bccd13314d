// SPDX-License-Identifier: MIT
#include "OwnFolderScans.h"

#include "FolderListing.h"
#include "IdentifierText.h"
#include "MatchRules.h"
#include "Platform/PropertyList.h"
#include "Platform/SystemLayout.h"
#include "Services/AdminPathPolicy.h"
#include "SizeMeasurer.h"

#include <QFileInfo>

using namespace IdentifierText;
using namespace Qt::StringLiterals;

namespace OwnFolderScans {

namespace {
void scanLaunchFolder(const QString &folder, FileCategory category, const Fingerprint &fingerprint,
                      DiscoveryResults &results)
{
    const QLatin1String helperTools("/Library/PrivilegedHelperTools/");
    for (const QString &name : FolderListing::names(folder)) {
        if (!name.endsWith(QLatin1String(".plist")))
            continue;
        const QString path = folder + QLatin1Char('/') + name;
        const std::optional<QVariantMap> plist = PropertyList::readDictionary(path);
        const auto found = MatchRules::matchLaunchItem(name, plist, fingerprint);
        if (!found || MatchRules::startsOtherApp(plist, fingerprint))
            continue;
        results.add(DiscoveryResults::makeItem(path, category, *found, fingerprint));
        for (const QString &program : MatchRules::programPaths(plist)) {
            const QString helper = SystemLayout::path(program); // a Mac path inside the job
            if (program.startsWith(helperTools) && QFileInfo::exists(helper))
                results.add(DiscoveryResults::makeItem(helper, FileCategory::helperTools, *found,
                                                       fingerprint));
        }
    }
}

// The home-folder name test: the normalised name is one of the app's, or continues one of them
// with "-" in the name as written (.writer-cli for writer, not .writerpro).
bool isAppName(const QString &name, const QSet<QString> &appNames)
{
    const QString normalized = normalizedName(name);
    if (appNames.contains(normalized))
        return true;
    const QString lower = name.toLower();
    return std::any_of(appNames.cbegin(), appNames.cend(), [&](const QString &s) {
        return normalized.startsWith(s) && lower.mid(s.size()).startsWith(QLatin1Char('-'));
    });
}
} // namespace

const QStringList &sharedDotFolders()
{
    // Shell, toolchain and package-manager folders: an app called "Local" or "Cargo" must not
    // take them, as every program of the user shares them.
    static const QStringList folders{
        u".local"_s,  u".config"_s,    u".cache"_s,     u".ssh"_s,           u".gnupg"_s,
        u".trash"_s,  u".npm"_s,       u".android"_s,   u".bash_sessions"_s, u".zsh_sessions"_s,
        u".gradle"_s, u".m2"_s,        u".cargo"_s,     u".rustup"_s,        u".nvm"_s,
        u".yarn"_s,   u".gem"_s,       u".pub-cache"_s, u".kube"_s,          u".aws"_s,
        u".docker"_s, u".oh-my-zsh"_s, u".bundle"_s,    u".pyenv"_s};
    return folders;
}

void scanLaunchItems(const Fingerprint &fingerprint, DiscoveryResults &results)
{
    scanLaunchFolder(SystemLayout::path(u"~/Library/LaunchAgents"_s), FileCategory::launchAgents,
                     fingerprint, results);
    scanLaunchFolder(SystemLayout::path(u"/Library/LaunchAgents"_s), FileCategory::launchAgents,
                     fingerprint, results);
    scanLaunchFolder(SystemLayout::path(u"/Library/LaunchDaemons"_s), FileCategory::launchDaemons,
                     fingerprint, results);
}

void scanReceipts(const Fingerprint &fingerprint, DiscoveryResults &results)
{
    const QString folder = SystemLayout::path(u"/private/var/db/receipts"_s);
    for (const QString &name : FolderListing::names(folder)) {
        if (!name.endsWith(QLatin1String(".plist")))
            continue;
        const QString id = name.chopped(6);
        if (!AdminPathPolicy::isValidPackageID(id))
            continue;
        const auto found = MatchRules::match(id, fingerprint, false);
        if (!found)
            continue;
        const QString path = folder + QLatin1Char('/') + name;
        FileItem item =
            DiscoveryResults::makeItem(path, FileCategory::receipts, *found, fingerprint);
        // The bill of materials goes with its receipt and is not an item of its own.
        item.size += SizeMeasurer::itemSize(folder + QLatin1Char('/') + id + QLatin1String(".bom"));
        item.packageID = id;
        results.add(std::move(item));
    }
}

void scanHomeFolder(const Fingerprint &fingerprint, DiscoveryResults &results)
{
    QSet<QString> appNames = fingerprint.names;
    for (const QString &executable : fingerprint.executableNames)
        appNames.insert(normalizedName(executable));
    if (fingerprint.shortName.size() >= 4)
        appNames.insert(fingerprint.shortName);
    const QString home = SystemLayout::home();
    for (const QString &name : FolderListing::names(home)) {
        if (name.size() < 2 || !name.startsWith(QLatin1Char('.')) ||
            sharedDotFolders().contains(name.toLower()) || !isAppName(name.mid(1), appNames))
            continue;
        results.add(DiscoveryResults::makeItem(
            home + QLatin1Char('/') + name, FileCategory::homeFolder, Match::exact(), fingerprint));
    }
    const QString config = home + u"/.config"_s;
    for (const QString &name : FolderListing::names(config)) {
        if (isAppName(name, appNames))
            results.add(DiscoveryResults::makeItem(config + QLatin1Char('/') + name,
                                                   FileCategory::homeFolder, Match::exact(),
                                                   fingerprint));
    }
}

} // namespace OwnFolderScans
