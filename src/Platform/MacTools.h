// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Mac paths of the system tools more than one service runs (SystemLayout::path finds them).
namespace MacTools {

// Unregisters applications from Launch Services.
inline QString lsregister()
{
    return QStringLiteral("/System/Library/Frameworks/CoreServices.framework/Frameworks/"
                          "LaunchServices.framework/Support/lsregister");
}

} // namespace MacTools
