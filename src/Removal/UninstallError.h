// SPDX-License-Identifier: MIT
#pragma once

#include "Core/TypedError.h"

enum class UninstallErrorKind { failedToUnloadLaunchItem, failedToQuitApp, appNotRunning };

// Why quitting the app or unloading a launch item did not work.
class UninstallError : public TypedError<UninstallErrorKind>
{
public:
    using Kind = UninstallErrorKind;

    static UninstallError failedToUnloadLaunchItem(const QString &message)
    {
        return UninstallError(Kind::failedToUnloadLaunchItem, message);
    }
    static UninstallError failedToQuitApp() { return UninstallError(Kind::failedToQuitApp); }
    static UninstallError appNotRunning() { return UninstallError(Kind::appNotRunning); }

    // The text shown to the user.
    [[nodiscard]] QString message() const;

private:
    using TypedError::TypedError;
};
