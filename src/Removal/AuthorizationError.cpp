// SPDX-License-Identifier: MIT
#include "AuthorizationError.h"

QString AuthorizationError::message() const
{
    switch (kind()) {
    case Kind::deletionFailed:
        return QStringLiteral("Failed to remove files with admin privileges: ") + detail();
    case Kind::scriptCreationFailed:
        return QStringLiteral("Failed to create authorization script");
    case Kind::userCanceled:
        return QStringLiteral("Administrator permission was canceled");
    }
    return {};
}
