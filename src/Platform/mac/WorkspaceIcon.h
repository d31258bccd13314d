// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

// macOS (WorkspaceIcon.mm): the icon NSWorkspace shows for a file, as PNG bytes.
namespace WorkspaceIcon {

// The icon's TIFF representation made into a bitmap and encoded as PNG, not scaled; nothing when
// a step fails. Safe on any thread.
[[nodiscard]] std::optional<QByteArray> pngForFile(const QString &path);

} // namespace WorkspaceIcon
