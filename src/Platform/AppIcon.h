// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

class SystemLayout;

namespace AppIcon {

// The icon of an application bundle as PNG bytes. On a real Mac the icon the system shows for
// the bundle; elsewhere, and when the system gives none, fromIcnsResource. Nothing when there
// is none.
[[nodiscard]] std::optional<QByteArray> extract(const SystemLayout &layout,
                                                const QString &bundlePath);

// The icns file named by CFBundleIconFile in Contents/Resources (".icns" added when the name has
// no extension), its largest PNG entry. Nothing when there is none.
[[nodiscard]] std::optional<QByteArray> fromIcnsResource(const QString &bundlePath);

// The largest PNG entry of an icns file's bytes; nothing for anything else. Bounds-checked.
[[nodiscard]] std::optional<QByteArray> largestPngInIcns(const QByteArray &icns);

} // namespace AppIcon
