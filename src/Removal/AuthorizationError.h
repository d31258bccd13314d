// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Why the privileged step did not run. A value with the user's text.
class AuthorizationError
{
public:
    enum class Kind { deletionFailed, scriptCreationFailed, userCanceled };

    static AuthorizationError deletionFailed(const QString &message)
    {
        return AuthorizationError(Kind::deletionFailed, message);
    }
    static AuthorizationError scriptCreationFailed()
    {
        return AuthorizationError(Kind::scriptCreationFailed);
    }
    static AuthorizationError userCanceled() { return AuthorizationError(Kind::userCanceled); }

    [[nodiscard]] Kind kind() const { return m_kind; }
    // The text shown to the user.
    [[nodiscard]] QString message() const;

    friend bool operator==(const AuthorizationError &, const AuthorizationError &) = default;

private:
    explicit AuthorizationError(Kind kind, QString detail = {})
        : m_kind(kind), m_detail(std::move(detail))
    {}

    Kind m_kind;
    QString m_detail;
};
