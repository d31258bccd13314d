// SPDX-License-Identifier: MIT
#pragma once

#include "Models/AppInfo.h"
#include "Platform/SystemLayout.h"

#include <QByteArray>
#include <QString>
#include <functional>
#include <optional>

// Reads a dropped bundle into its full record. Everything here touches the disk: call it on the
// thread pool, never on the GUI thread.
namespace AppInfoReader {

// Nothing when the path is not a readable bundle with an identifier. The app is protected when
// its bundle lies under the layout's "/System/", as written or with its links resolved.
[[nodiscard]] std::optional<AppInfo> read(const SystemLayout &layout, const QString &bundlePath);
// read() and the bundle's icon, passed through `shapeIcon` when one is given.
[[nodiscard]] std::optional<AppInfo>
readWithIcon(const SystemLayout &layout, const QString &bundlePath,
             const std::function<QByteArray(const QByteArray &)> &shapeIcon = {});
// The bundle's last path component, also when the path ends in "/".
[[nodiscard]] QString lastPathComponent(const QString &path);
// The text after the last "." of the last path component.
[[nodiscard]] QString pathExtension(const QString &path);
// Whether the path, with every symbolic link resolved, lies under the Mac's "/System/".
[[nodiscard]] bool isUnderSystemFolder(const SystemLayout &layout, const QString &path);

} // namespace AppInfoReader
