// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace AppIcon {

// The icon of an application bundle as PNG bytes: the icns file named by CFBundleIconFile in
// Contents/Resources (".icns" added when the name has no extension), its largest PNG entry.
// Nothing when there is none.
[[nodiscard]] std::optional<QByteArray> extract(const QString &bundlePath);

// The largest PNG entry of an icns file's bytes; nothing for anything else. Bounds-checked.
[[nodiscard]] std::optional<QByteArray> largestPngInIcns(const QByteArray &icns);

} // namespace AppIcon
