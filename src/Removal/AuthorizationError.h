// SPDX-License-Identifier: MIT
#pragma once

#include "Core/TypedError.h"

enum class AuthorizationErrorKind { deletionFailed, scriptCreationFailed, userCanceled };

// Why the privileged step did not run.
class AuthorizationError : public TypedError<AuthorizationErrorKind>
{
public:
    using Kind = AuthorizationErrorKind;

    static AuthorizationError deletionFailed(const QString &message)
    {
        return AuthorizationError(Kind::deletionFailed, message);
    }
    static AuthorizationError scriptCreationFailed()
    {
        return AuthorizationError(Kind::scriptCreationFailed);
    }
    static AuthorizationError userCanceled() { return AuthorizationError(Kind::userCanceled); }

    // The text shown to the user.
    [[nodiscard]] QString message() const;

private:
    using TypedError::TypedError;
};
