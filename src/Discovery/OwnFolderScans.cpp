// SPDX-License-Identifier: MIT
#include "OwnFolderScans.h"

#include "Core/PackageIdentifier.h"
#include "Discovery/FolderListing.h"
#include "Discovery/IdentifierText.h"
#include "Discovery/MatchRules.h"
#include "Discovery/SizeMeasurer.h"
#include "Platform/PropertyList.h"
#include "Platform/SystemLayout.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <unistd.h>

using namespace IdentifierText;
using namespace Qt::StringLiterals;

namespace OwnFolderScans {

namespace {
void scanLaunchFolder(const SystemLayout &layout, const QString &folder, FileCategory category,
                      bool userWritable, const Fingerprint &fingerprint, DiscoveryResults &results)
{
    const QLatin1String helperTools("/Library/PrivilegedHelperTools/");
    for (const QString &name : FolderListing::names(folder)) {
        if (!name.endsWith(QLatin1String(".plist")))
            continue;
        const QString path = folder + QLatin1Char('/') + name;
        const std::optional<QVariantMap> plist = PropertyList::readDictionary(path);
        const auto found = MatchRules::matchLaunchItem(name, plist, fingerprint, layout);
        if (!found || MatchRules::startsOtherApp(plist, fingerprint, layout))
            continue;
        results.add(DiscoveryResults::makeItem(path, category, *found, fingerprint));
        const QString label = MatchRules::jobLabel(name, plist);
        for (const QString &program : MatchRules::programPaths(plist)) {
            const QString helper = layout.path(program); // a Mac path inside the job
            if (!program.startsWith(helperTools) || !QFileInfo::exists(helper))
                continue;
            Match byJob = found->kind == Match::Kind::exact
                              ? Match::exact(u"run by launch job "_s + label)
                              : *found;
            // Any program of the user's can write a user job: what it names is only chosen
            // on the helper's own merits.
            if (userWritable &&
                !MatchRules::match(QFileInfo(helper).fileName(), fingerprint, false))
                byJob = Match::unsure(
                    u"run by launch job "_s + label,
                    u"Named by launch job %1, which any program of yours can write"_s.arg(label));
            results.add(
                DiscoveryResults::makeItem(helper, FileCategory::helperTools, byJob, fingerprint));
        }
    }
}

// The home-folder name test: the name is one of the app's, whole or continued with a
// separator or a version (.writer-cli, .Writer_7, .writer2), never running on (.writerpro).
std::optional<QString> appNameOf(const QString &name, const QSet<QString> &appNames)
{
    for (const QString &appName : appNames) {
        const Continuation how = nameContinuation(name, appName);
        if (how == Continuation::exact || how == Continuation::separated ||
            how == Continuation::version)
            return appName;
    }
    return std::nullopt;
}

// The home's own entries, which the system and the shell keep: never shown.
bool isHomeSystemEntry(const QString &lowerName)
{
    static const QSet<QString> entries{
        u".trash"_s,        u".ds_store"_s,      u".cfusertextencoding"_s,
        u".localized"_s,    u".profile"_s,       u".bash_profile"_s,
        u".bashrc"_s,       u".bash_login"_s,    u".bash_logout"_s,
        u".bash_history"_s, u".bash_sessions"_s, u".zshrc"_s,
        u".zprofile"_s,     u".zshenv"_s,        u".zlogin"_s,
        u".zlogout"_s,      u".zsh_history"_s,   u".zsh_sessions"_s,
        u".ssh"_s,          u".gnupg"_s,         u".inputrc"_s,
        u".login"_s,        u".cshrc"_s,         u".tcshrc"_s,
        u".viminfo"_s,      u".lesshst"_s,       u".python_history"_s};
    return entries.contains(lowerName);
}

// Where a link found in a folder of command-line tools leads, as a real path.
QString linkTarget(const SystemLayout &layout, const QString &link)
{
    const QByteArray raw = QFile::encodeName(link);
    char buffer[4096];
    const ssize_t length = ::readlink(raw.constData(), buffer, sizeof buffer);
    if (length <= 0 || static_cast<size_t>(length) >= sizeof buffer)
        return {};
    const QString written = QFile::decodeName(QByteArray(buffer, int(length)));
    // An absolute target is a Mac path; a relative one leads from the link's folder.
    if (written.startsWith(QLatin1Char('/')))
        return QDir::cleanPath(layout.path(written));
    return QDir::cleanPath(QFileInfo(link).path() + QLatin1Char('/') + written);
}
} // namespace

const QStringList &sharedDotFolders()
{
    // Toolchain and package-manager folders: an app called "Docker" or "Gradle" may have made
    // them, but every command-line tool of the user shares them.
    static const QStringList folders{u".local"_s,     u".config"_s, u".cache"_s, u".npm"_s,
                                     u".android"_s,   u".gradle"_s, u".m2"_s,    u".cargo"_s,
                                     u".rustup"_s,    u".nvm"_s,    u".yarn"_s,  u".gem"_s,
                                     u".pub-cache"_s, u".kube"_s,   u".aws"_s,   u".docker"_s,
                                     u".oh-my-zsh"_s, u".bundle"_s, u".pyenv"_s};
    return folders;
}

void scanLaunchItems(const SystemLayout &layout, const Fingerprint &fingerprint,
                     DiscoveryResults &results)
{
    scanLaunchFolder(layout, layout.path(u"~/Library/LaunchAgents"_s), FileCategory::launchAgents,
                     true, fingerprint, results);
    scanLaunchFolder(layout, layout.path(u"/Library/LaunchAgents"_s), FileCategory::launchAgents,
                     false, fingerprint, results);
    scanLaunchFolder(layout, layout.path(u"/Library/LaunchDaemons"_s), FileCategory::launchDaemons,
                     false, fingerprint, results);
}

void scanReceipts(const SystemLayout &layout, const Fingerprint &fingerprint,
                  DiscoveryResults &results)
{
    const QString folder = layout.path(u"/private/var/db/receipts"_s);
    for (const QString &name : FolderListing::names(folder)) {
        if (!name.endsWith(QLatin1String(".plist")))
            continue;
        const QString id = name.chopped(6);
        if (!PackageIdentifier::isValid(id))
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

void scanHomeFolder(const SystemLayout &layout, const Fingerprint &fingerprint,
                    DiscoveryResults &results)
{
    QSet<QString> appNames = fingerprint.names;
    for (const QString &executable : fingerprint.executableNames)
        appNames.insert(normalizedName(executable));
    if (fingerprint.shortName.size() >= 4)
        appNames.insert(fingerprint.shortName);
    const QString home = layout.home();
    for (const QString &name : FolderListing::names(home)) {
        if (name.size() < 2 || !name.startsWith(QLatin1Char('.')) ||
            isHomeSystemEntry(name.toLower()))
            continue;
        const auto appName = appNameOf(name.mid(1), appNames);
        if (!appName)
            continue;
        const QString reason = u"name "_s + fingerprint.spelledName(*appName);
        // Named like the app, yet the shell's and the toolchains' own: the user decides.
        const Match found = sharedDotFolders().contains(name.toLower())
                                ? Match::unsure(reason, u"Also used by command-line tools"_s)
                                : Match::exact(reason);
        results.add(DiscoveryResults::makeItem(home + QLatin1Char('/') + name,
                                               FileCategory::homeFolder, found, fingerprint));
    }
    const QString config = home + u"/.config"_s;
    for (const QString &name : FolderListing::names(config)) {
        if (const auto appName = appNameOf(name, appNames))
            results.add(DiscoveryResults::makeItem(
                config + QLatin1Char('/') + name, FileCategory::homeFolder,
                Match::exact(u"name "_s + fingerprint.spelledName(*appName)), fingerprint));
    }
}

void scanCommandLineLinks(const SystemLayout &layout, const Fingerprint &fingerprint,
                          DiscoveryResults &results)
{
    const QString inside = fingerprint.bundlePath + QLatin1Char('/');
    for (const QString &macFolder : {u"/usr/local/bin"_s, u"/opt/homebrew/bin"_s}) {
        const QString folder = layout.path(macFolder);
        for (const QString &name : FolderListing::names(folder)) {
            const QString path = folder + QLatin1Char('/') + name;
            // readlink answers nothing for a file that is not a link: one call per entry.
            const QString target = linkTarget(layout, path);
            if (target.isEmpty() || !target.startsWith(inside))
                continue;
            results.add(DiscoveryResults::makeItem(
                path, FileCategory::other, Match::exact(u"link into the app"_s), fingerprint));
        }
    }
}

} // namespace OwnFolderScans
