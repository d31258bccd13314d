// SPDX-License-Identifier: MIT
#include "UninstallError.h"

QString UninstallError::message() const
{
    switch (m_kind) {
    case Kind::failedToUnloadLaunchItem:
        return QStringLiteral("Failed to unload launch item: ") + m_detail;
    case Kind::failedToQuitApp:
        return QStringLiteral("Failed to quit the application");
    case Kind::appNotRunning:
        return QStringLiteral("Application is not running");
    }
    return {};
}
