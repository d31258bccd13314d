// SPDX-License-Identifier: MIT
#pragma once

#include "Models/AppInfo.h"

#include <QByteArray>
#include <QString>
#include <optional>

// Reads a dropped bundle into its full record. Everything here touches the disk: call it on the
// thread pool, never on the GUI thread.
namespace AppInfoReader {

// Nothing when the path is not a readable bundle with an identifier.
[[nodiscard]] std::optional<AppInfo> read(const QString &bundlePath);
// read() and the bundle's icon, clipped.
[[nodiscard]] std::optional<AppInfo> readWithIcon(const QString &bundlePath);
// The icon with its corners cut to the rounded square every app icon is shown in (radius 22 %
// of its edge), so a square icon's corners never stick out; bytes that do not decode unchanged.
[[nodiscard]] QByteArray clippedIcon(const QByteArray &encoded);
// The bundle's last path component, also when the path ends in "/".
[[nodiscard]] QString lastPathComponent(const QString &path);
// The text after the last "." of the last path component.
[[nodiscard]] QString pathExtension(const QString &path);
// Whether the path, with every symbolic link resolved, lies under the Mac's "/System/".
[[nodiscard]] bool isUnderSystemFolder(const QString &path);

} // namespace AppInfoReader
