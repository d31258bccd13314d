// SPDX-License-Identifier: MIT
#pragma once

#include "Discovery/DiscoveryResults.h"

#include <QStringList>

class SystemLayout;

// The scans with rules of their own, run after the search locations.
namespace OwnFolderScans {

// Launch agents and daemons, judged by name, Label, associated bundles and programs, with the
// privileged helper tools their jobs run. Jobs that start another installed app are left.
void scanLaunchItems(const SystemLayout &layout, const Fingerprint &fingerprint,
                     DiscoveryResults &results);
// Installer receipts, judged by package identifier; an item carries its bill of materials'
// size and the identifier to forget.
void scanReceipts(const SystemLayout &layout, const Fingerprint &fingerprint,
                  DiscoveryResults &results);
// Dot-entries of the home folder and entries of ~/.config named like the app; the shared
// tool folders among them unselected, the home's own entries never.
void scanHomeFolder(const SystemLayout &layout, const Fingerprint &fingerprint,
                    DiscoveryResults &results);
// Command-line tools the app installed: links in /usr/local/bin and /opt/homebrew/bin whose
// target lies inside the bundle.
void scanCommandLineLinks(const SystemLayout &layout, const Fingerprint &fingerprint,
                          DiscoveryResults &results);

// Home dot-folders that many programs share, lower-case, dot included: never selected.
[[nodiscard]] const QStringList &sharedDotFolders();

} // namespace OwnFolderScans
