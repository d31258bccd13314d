// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

// Where the macOS services (NSWorkspace, NSFileManager, in Platform/mac) stand behind the
// platform layer instead of the portable code.
namespace NativeServices {

// True in a macOS build.
[[nodiscard]] constexpr bool available()
{
#if defined(Q_OS_MACOS)
    return true;
#else
    return false;
#endif
}

// Whether they also serve the user's own files depends on the root: see
// SystemLayout::usesNativeFileServices(). This header knows nothing of the layout, so the layout
// can ask it without a circle.

} // namespace NativeServices
