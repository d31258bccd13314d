// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <optional>

// macOS: the user's Trash folder as NSFileManager names it (UserTrashFolder.mm).
namespace UserTrashFolder {

// The first Trash folder NSFileManager names for the user; nothing when it names none.
[[nodiscard]] std::optional<QString> path();

} // namespace UserTrashFolder
