// SPDX-License-Identifier: MIT
#include "AuthorizationError.h"

QString AuthorizationError::message() const
{
    switch (m_kind) {
    case Kind::deletionFailed:
        return QStringLiteral("Failed to remove files with admin privileges: ") + m_detail;
    case Kind::scriptCreationFailed:
        return QStringLiteral("Failed to create authorization script");
    case Kind::userCanceled:
        return QStringLiteral("Administrator permission was canceled");
    }
    return {};
}
