// SPDX-License-Identifier: MIT
#pragma once

#include "Models/FileItem.h"

#include <QObject>
#include <QString>

// The one mark a file row shows, shared by the window and the command line.
namespace ItemBadges {
Q_NAMESPACE
enum class Kind { none, partOfMacOS, note, requiresAdmin, lowConfidence };
Q_ENUM_NS(Kind)
} // namespace ItemBadges

namespace ItemBadge {

using Kind = ItemBadges::Kind;

// The first mark that applies: part of macOS, the note, requires admin, low confidence.
[[nodiscard]] Kind kind(const FileItem &item);
// Its text, "• " included; empty for none.
[[nodiscard]] QString text(const FileItem &item);

} // namespace ItemBadge
