// SPDX-License-Identifier: MIT
#pragma once

#include "Discovery/Fingerprint.h"
#include "Discovery/Match.h"

#include <QVariantMap>

class SystemLayout;
#include <optional>

// Decides from a name (and for launch items their job description) whether an entry belongs to
// the app. Functions of their arguments; only startsOtherApp looks at the disk.
namespace MatchRules {

// Identifiers, then names (when allowed), then the vendor prefix; anything that names another
// installed app more precisely than the app's own identifier is refused.
[[nodiscard]] std::optional<Match> match(const QString &name, const Fingerprint &fingerprint,
                                         bool allowNames);
// Report files named after a process ("Writer-2024-05-01-101010.ips"), or by an identifier.
[[nodiscard]] std::optional<Match> matchCrashReport(const QString &name,
                                                    const Fingerprint &fingerprint);
// A launchd job: by file name, Label, AssociatedBundleIdentifiers, or a program in the bundle.
[[nodiscard]] std::optional<Match> matchLaunchItem(const QString &name,
                                                   const std::optional<QVariantMap> &plist,
                                                   const Fingerprint &fingerprint,
                                                   const SystemLayout &layout);
// Program, then the first of ProgramArguments: Mac paths as the job names them.
[[nodiscard]] QStringList programPaths(const std::optional<QVariantMap> &plist);
// The job's Label, or the file name without ".plist" when it has none.
[[nodiscard]] QString jobLabel(const QString &name, const std::optional<QVariantMap> &plist);
// The job launches another app bundle that still exists.
[[nodiscard]] bool startsOtherApp(const std::optional<QVariantMap> &plist,
                                  const Fingerprint &fingerprint, const SystemLayout &layout);
// "Shared with A and B, left unselected", or the count form from three apps on.
[[nodiscard]] QString sharedNote(const QStringList &apps, const Fingerprint &fingerprint);
// Selection, confidence and note of an item found by `match`.
[[nodiscard]] MatchVerdict verdict(const Match &match, const Fingerprint &fingerprint);

} // namespace MatchRules
