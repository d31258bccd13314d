// SPDX-License-Identifier: MIT
#pragma once

#include "DiscoveryResults.h"

#include <QStringList>

// The scans with rules of their own, run after the search locations.
namespace OwnFolderScans {

// Launch agents and daemons, judged by name, Label, associated bundles and programs, with the
// privileged helper tools their jobs run. Jobs that start another installed app are left.
void scanLaunchItems(const Fingerprint &fingerprint, DiscoveryResults &results);
// Installer receipts, judged by package identifier; an item carries its bill of materials'
// size and the identifier to forget.
void scanReceipts(const Fingerprint &fingerprint, DiscoveryResults &results);
// Dot-entries of the home folder and entries of ~/.config named like the app.
void scanHomeFolder(const Fingerprint &fingerprint, DiscoveryResults &results);

// Home dot-folders that many programs share and no app ever takes, lower-case, dot included.
[[nodiscard]] const QStringList &sharedDotFolders();

} // namespace OwnFolderScans
