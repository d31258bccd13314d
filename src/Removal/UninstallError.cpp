// SPDX-License-Identifier: MIT
#include "UninstallError.h"

QString UninstallError::message() const
{
    switch (kind()) {
    case Kind::failedToUnloadLaunchItem:
        return QStringLiteral("Failed to unload launch item: ") + detail();
    case Kind::failedToQuitApp:
        return QStringLiteral("Failed to quit the application");
    case Kind::appNotRunning:
        return QStringLiteral("Application is not running");
    }
    return {};
}
