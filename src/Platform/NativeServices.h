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

// The services that act on the user's own files (the Trash, its folder, file icons) know only
// the real machine; a fake Mac, even on a Mac, keeps the portable code so that everything stays
// inside its root and home. True on macOS with root "/".
[[nodiscard]] bool serveFiles();

} // namespace NativeServices
