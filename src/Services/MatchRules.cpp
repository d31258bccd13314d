// SPDX-License-Identifier: MIT
#include "MatchRules.h"

#include "IdentifierText.h"
#include "Platform/SystemLayout.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

using namespace IdentifierText;

namespace MatchRules {

namespace {
// Another installed app claims the candidate when its identifier fits the candidate and
// continues what matched it: com.acme.writer.pro.plist is that app's, not com.acme.writer's,
// while com.acme.writer.pro keeps its own files when com.acme.writer is installed too.
bool belongsToOtherApp(const QString &candidate, const QString &matched,
                       const Fingerprint &fingerprint)
{
    return std::any_of(fingerprint.otherAppIDs.cbegin(), fingerprint.otherAppIDs.cend(),
                       [&](const QString &other) {
                           return other.size() > matched.size() &&
                                  !fingerprint.isOwnIdentifier(other) &&
                                  hasIdentifierPrefix(candidate, other);
                       });
}

// The identifier rule decides as soon as one identifier fits, also when it refuses.
struct IdentifierDecision
{
    bool decided = false;
    std::optional<Match> match;
};

IdentifierDecision matchIdentifiers(const QStringList &candidates, const Fingerprint &fingerprint)
{
    for (const QString &candidate : candidates) {
        for (const QString &id : fingerprint.identifiers) {
            if (!hasIdentifierPrefix(candidate, id))
                continue;
            if (belongsToOtherApp(candidate, id, fingerprint))
                return {true, std::nullopt};
            if (const auto sharers = fingerprint.groupSharers.constFind(id);
                sharers != fingerprint.groupSharers.cend())
                return {true, Match::shared(*sharers)};
            return {true, Match::exact()};
        }
    }
    return {};
}

std::optional<Match> matchVendor(const QStringList &candidates, const Fingerprint &fingerprint)
{
    if (fingerprint.vendorPrefix.isEmpty())
        return std::nullopt;
    for (const QString &candidate : candidates) {
        if (!candidate.startsWith(fingerprint.vendorPrefix))
            continue;
        if (belongsToOtherApp(candidate, fingerprint.vendorPrefix, fingerprint))
            return std::nullopt;
        return Match::vendorOnly();
    }
    return std::nullopt;
}

bool startsWithSeparatedName(const QString &lower, const QString &name)
{
    if (lower.size() <= name.size() || !lower.startsWith(name))
        return false;
    const QChar next = lower.at(name.size());
    return next == QLatin1Char('-') || next == QLatin1Char('_') || next == QLatin1Char('.');
}

QString realPath(const QString &macPath)
{
    return QDir::cleanPath(SystemLayout::path(macPath));
}
} // namespace

std::optional<Match> match(const QString &name, const Fingerprint &fingerprint, bool allowNames)
{
    const QString lower = name.toLower();
    const QStringList candidates{lower, removingTeamPrefix(lower)};
    if (const IdentifierDecision byIdentifier = matchIdentifiers(candidates, fingerprint);
        byIdentifier.decided)
        return byIdentifier.match;
    if (allowNames && (fingerprint.names.contains(normalizedName(name)) ||
                       fingerprint.names.contains(normalizedName(stem(name)))))
        return Match::exact();
    return matchVendor(candidates, fingerprint);
}

std::optional<Match> matchCrashReport(const QString &name, const Fingerprint &fingerprint)
{
    const QString lower = name.toLower();
    for (const QSet<QString> *names :
         {&fingerprint.executableNames, &fingerprint.crashReportNames}) {
        if (std::any_of(names->cbegin(), names->cend(),
                        [&](const QString &n) { return startsWithSeparatedName(lower, n); }))
            return Match::exact();
    }
    const auto found = match(name, fingerprint, false);
    if (found && found->kind == Match::Kind::exact)
        return found;
    return std::nullopt;
}

QStringList programPaths(const std::optional<QVariantMap> &plist)
{
    QStringList paths;
    if (!plist)
        return paths;
    const QVariant program = plist->value(QStringLiteral("Program"));
    if (program.typeId() == QMetaType::QString)
        paths.append(program.toString());
    const QVariant arguments = plist->value(QStringLiteral("ProgramArguments"));
    if (arguments.typeId() == QMetaType::QVariantList) {
        const QVariantList list = arguments.toList();
        const bool allTexts = std::all_of(list.cbegin(), list.cend(), [](const QVariant &v) {
            return v.typeId() == QMetaType::QString;
        });
        if (!list.isEmpty() && allTexts)
            paths.append(list.first().toString());
    }
    return paths;
}

std::optional<Match> matchLaunchItem(const QString &name, const std::optional<QVariantMap> &plist,
                                     const Fingerprint &fingerprint)
{
    if (auto found = match(name, fingerprint, false))
        return found;
    if (!plist)
        return std::nullopt;
    const QVariant label = plist->value(QStringLiteral("Label"));
    if (label.typeId() == QMetaType::QString) {
        if (auto found = match(label.toString(), fingerprint, false))
            return found;
    }
    const QVariant associated = plist->value(QStringLiteral("AssociatedBundleIdentifiers"));
    if (associated.typeId() == QMetaType::QVariantList) {
        for (const QVariant &id : associated.toList()) {
            if (id.typeId() == QMetaType::QString &&
                fingerprint.bundleIDs.contains(id.toString().toLower()))
                return Match::exact();
        }
    }
    const QString inside = fingerprint.bundlePath + QLatin1Char('/');
    for (const QString &program : programPaths(plist)) {
        if (realPath(program).startsWith(inside))
            return Match::exact();
    }
    return std::nullopt;
}

bool startsOtherApp(const std::optional<QVariantMap> &plist, const Fingerprint &fingerprint)
{
    for (const QString &program : programPaths(plist)) {
        const qsizetype end = program.indexOf(QLatin1String(".app/"));
        if (end < 0)
            continue;
        const QString bundle = realPath(program.left(end) + QLatin1String(".app"));
        if (bundle == fingerprint.bundlePath)
            continue;
        if (QFileInfo::exists(bundle))
            return true;
    }
    return false;
}

QString sharedNote(const QStringList &apps, const Fingerprint &fingerprint)
{
    if (apps.size() < 3)
        return QStringLiteral("Shared with %1, left unselected")
            .arg(apps.join(QLatin1String(" and ")));
    return QStringLiteral("Shared with %1 other %2 apps, left unselected")
        .arg(apps.size())
        .arg(fingerprint.vendorDisplayName());
}

MatchVerdict verdict(const Match &match, const Fingerprint &fingerprint)
{
    switch (match.kind) {
    case Match::Kind::exact:
        return {};
    case Match::Kind::vendorOnly:
        if (!fingerprint.vendorHasOtherApps()) {
            const QString vendor = fingerprint.vendorDisplayName();
            return {true, 0.7,
                    QStringLiteral("Shared %1 files, no other %1 apps installed").arg(vendor)};
        }
        return {false, 0.7, sharedNote(fingerprint.otherVendorAppNames, fingerprint)};
    case Match::Kind::shared:
        return {false, 0.7, sharedNote(match.sharers, fingerprint)};
    }
    return {};
}

} // namespace MatchRules
