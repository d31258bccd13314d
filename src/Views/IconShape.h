// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

// Drawing needs Qt Gui, which only the window links; the window hands this to the view model.
namespace IconShape {

// The icon with its corners cut to the rounded square every app icon is shown in (radius 22 %
// of its edge), so a square icon's corners never stick out; bytes that do not decode unchanged.
[[nodiscard]] QByteArray rounded(const QByteArray &encoded);

} // namespace IconShape
