// SPDX-License-Identifier: MIT
#include "MatchRules.h"

#include "Discovery/IdentifierText.h"
#include "Platform/SystemLayout.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

using namespace IdentifierText;
using namespace Qt::StringLiterals;

namespace MatchRules {

namespace {
bool fits(Continuation how)
{
    return how != Continuation::none;
}

// A fit the user can trust: the whole name, or the name followed by a separator or a version.
bool isFirmFit(Continuation how)
{
    return how == Continuation::exact || how == Continuation::separated ||
           how == Continuation::version;
}

// Another installed app's identifier fits the candidate and is longer than what matched it:
// com.acme.writer.pro.plist is that app's, not com.acme.writer's, while com.acme.writer.pro
// keeps its own files when com.acme.writer is installed too.
bool claimedByOtherIdentifier(const QString &candidate, qsizetype matchedLength,
                              const Fingerprint &fingerprint)
{
    return std::any_of(fingerprint.otherAppIDs.cbegin(), fingerprint.otherAppIDs.cend(),
                       [&](const QString &other) {
                           return other.size() > matchedLength &&
                                  !fingerprint.isOwnIdentifier(other) &&
                                  !isTooBroadForPrefix(other) &&
                                  fits(identifierContinuation(candidate, other));
                       });
}

// Another installed app's name fits the text more precisely than the app's own did.
bool claimedByOtherName(const QString &text, qsizetype matchedLength,
                        const Fingerprint &fingerprint)
{
    return std::any_of(fingerprint.otherAppNames.cbegin(), fingerprint.otherAppNames.cend(),
                       [&](const QString &other) {
                           return other.size() > matchedLength && other.size() >= 4 &&
                                  !fingerprint.names.contains(other) &&
                                  fits(nameContinuation(text, other));
                       });
}

QString identifierReason(const QString &id, const Fingerprint &fingerprint)
{
    if (fingerprint.groupIDs.contains(id))
        return u"app group "_s + id;
    if (fingerprint.packageIDs.contains(id) && !fingerprint.bundleIDs.contains(id))
        return u"installer package "_s + id;
    return u"bundle identifier "_s + id;
}

bool isOutsideOwnNamespace(const QString &candidate, const Fingerprint &fingerprint)
{
    return !fingerprint.isPlatformApp &&
           candidate.startsWith(QLatin1String("com.apple."), Qt::CaseInsensitive);
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
            const Continuation how = identifierContinuation(candidate, id);
            if (!fits(how))
                continue;
            // A namespace-wide identifier, or one in the platform's namespace, only ever
            // matches whole: as a prefix it would take every app's files of that namespace.
            const bool whole = how == Continuation::exact ||
                               identifierContinuation(stem(candidate), id) == Continuation::exact;
            if (!whole && (isTooBroadForPrefix(id) || isOutsideOwnNamespace(id, fingerprint)))
                continue;
            if (claimedByOtherIdentifier(candidate, id.size(), fingerprint))
                return {true, std::nullopt};
            const QString reason = identifierReason(id, fingerprint);
            if (const auto sharers = fingerprint.groupSharers.constFind(id);
                sharers != fingerprint.groupSharers.cend())
                return {true, Match::shared(*sharers, reason)};
            if (how == Continuation::camel)
                return {true, Match::unsure(reason, u"Name runs on from %1"_s.arg(id))};
            return {true, Match::exact(reason)};
        }
    }
    return {};
}

// The longest of the app's names that the text fits, with how it fits.
struct NameFit
{
    QString name;
    Continuation how = Continuation::none;
};

NameFit bestNameFit(const QString &text, const QSet<QString> &names)
{
    NameFit best;
    for (const QString &name : names) {
        const Continuation how = nameContinuation(text, name);
        if (fits(how) && name.size() > best.name.size())
            best = {name, how};
    }
    return best;
}

std::optional<Match> matchName(const QString &name, const Fingerprint &fingerprint)
{
    const NameFit fit = bestNameFit(name, fingerprint.names);
    if (!fits(fit.how) || claimedByOtherName(name, fit.name.size(), fingerprint) ||
        claimedByOtherIdentifier(name, 0, fingerprint))
        return std::nullopt;
    // A three-letter name continued ("Box Sync") or a name running into a capital
    // ("WriterUpdater") may be another program's: shown, not selected.
    if (fit.how == Continuation::exact || (isFirmFit(fit.how) && fit.name.size() >= 4))
        return Match::exact(u"name "_s + fingerprint.spelledName(fit.name));
    return Match::unsure(u"name "_s + fingerprint.spelledName(fit.name),
                         u"Name runs on from the app's name"_s);
}

// An identifier whose vendor or product part is the app's name ("com.cisco.webex.meetings"
// for Webex): the publisher wrote the app's name, though not its bundle identifier.
std::optional<Match> matchNameInIdentifier(const QString &candidate, const Fingerprint &fingerprint)
{
    if (isOutsideOwnNamespace(candidate, fingerprint))
        return std::nullopt;
    const QStringList parts = candidate.split(QLatin1Char('.'));
    if (parts.size() < 3)
        return std::nullopt;
    for (qsizetype i = 1; i <= 2 && i < parts.size(); ++i) {
        const NameFit fit = bestNameFit(parts.at(i), fingerprint.names);
        if (fit.name.size() < 4 || !isFirmFit(fit.how) ||
            claimedByOtherName(parts.at(i), fit.name.size(), fingerprint) ||
            claimedByOtherIdentifier(candidate, 0, fingerprint))
            continue;
        return Match::unsure(u"name %1 in identifier"_s.arg(fingerprint.spelledName(fit.name)),
                             u"Identifier carries the app's name, not its own"_s);
    }
    return std::nullopt;
}

std::optional<Match> matchVendor(const QStringList &candidates, const Fingerprint &fingerprint)
{
    if (fingerprint.vendorPrefix.isEmpty())
        return std::nullopt;
    for (const QString &candidate : candidates) {
        if (!candidate.startsWith(fingerprint.vendorPrefix, Qt::CaseInsensitive))
            continue;
        if (claimedByOtherIdentifier(candidate, fingerprint.vendorPrefix.size(), fingerprint))
            return std::nullopt;
        // com.acme.SheetsHelper names Acme Sheets, however the vendor spells its helpers.
        const QStringList parts =
            candidate.mid(fingerprint.vendorPrefix.size()).split(QLatin1Char('.'));
        if (std::any_of(parts.cbegin(), parts.cend(), [&](const QString &part) {
                return claimedByOtherName(part, 0, fingerprint);
            }))
            return std::nullopt;
        return Match::vendorOnly(u"vendor "_s + fingerprint.vendorPrefix.chopped(1));
    }
    return std::nullopt;
}

bool startsWithSeparatedName(const QString &lower, const QString &name)
{
    if (lower.size() <= name.size() || !lower.startsWith(name))
        return false;
    const QChar next = lower.at(name.size());
    return next == QLatin1Char('-') || next == QLatin1Char('_') || next == QLatin1Char('.') ||
           next == QLatin1Char(' ');
}

QString realPath(const SystemLayout &layout, const QString &macPath)
{
    return QDir::cleanPath(layout.path(macPath));
}
} // namespace

std::optional<Match> match(const QString &name, const Fingerprint &fingerprint, bool allowNames)
{
    QStringList candidates{name};
    if (const QString bare = removingTeamPrefix(name); bare != name)
        candidates.append(bare);
    if (const IdentifierDecision byIdentifier = matchIdentifiers(candidates, fingerprint);
        byIdentifier.decided)
        return byIdentifier.match;
    if (allowNames) {
        if (auto found = matchName(name, fingerprint))
            return found;
    }
    if (auto found = matchNameInIdentifier(candidates.last(), fingerprint))
        return found;
    return matchVendor(candidates, fingerprint);
}

std::optional<Match> matchCrashReport(const QString &name, const Fingerprint &fingerprint)
{
    const QString lower = name.toLower();
    for (const QSet<QString> *names :
         {&fingerprint.executableNames, &fingerprint.crashReportNames}) {
        for (const QString &process : *names) {
            if (startsWithSeparatedName(lower, process))
                return Match::exact(u"process "_s + process);
        }
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

QString jobLabel(const QString &name, const std::optional<QVariantMap> &plist)
{
    const QVariant label = plist ? plist->value(QStringLiteral("Label")) : QVariant();
    return label.typeId() == QMetaType::QString ? label.toString() : stem(name);
}

std::optional<Match> matchLaunchItem(const QString &name, const std::optional<QVariantMap> &plist,
                                     const Fingerprint &fingerprint, const SystemLayout &layout)
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
                return Match::exact(u"launch job for "_s + id.toString());
        }
    }
    const QString inside = fingerprint.bundlePath + QLatin1Char('/');
    for (const QString &program : programPaths(plist)) {
        if (realPath(layout, program).startsWith(inside))
            return Match::exact(u"launch job runs the app"_s);
    }
    return std::nullopt;
}

bool startsOtherApp(const std::optional<QVariantMap> &plist, const Fingerprint &fingerprint,
                    const SystemLayout &layout)
{
    for (const QString &program : programPaths(plist)) {
        const qsizetype end = program.indexOf(QLatin1String(".app/"));
        if (end < 0)
            continue;
        const QString bundle = realPath(layout, program.left(end) + QLatin1String(".app"));
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
    case Match::Kind::unsure:
        return {false, 0.6, match.note};
    }
    return {};
}

} // namespace MatchRules
