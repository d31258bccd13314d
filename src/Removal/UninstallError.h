// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Why quitting the app or unloading a launch item did not work. A value with the user's text.
class UninstallError
{
public:
    enum class Kind { failedToUnloadLaunchItem, failedToQuitApp, appNotRunning };

    static UninstallError failedToUnloadLaunchItem(const QString &message)
    {
        return UninstallError(Kind::failedToUnloadLaunchItem, message);
    }
    static UninstallError failedToQuitApp() { return UninstallError(Kind::failedToQuitApp); }
    static UninstallError appNotRunning() { return UninstallError(Kind::appNotRunning); }

    [[nodiscard]] Kind kind() const { return m_kind; }
    // The text shown to the user.
    [[nodiscard]] QString message() const;

    friend bool operator==(const UninstallError &, const UninstallError &) = default;

private:
    explicit UninstallError(Kind kind, QString detail = {})
        : m_kind(kind), m_detail(std::move(detail))
    {}

    Kind m_kind;
    QString m_detail;
};
