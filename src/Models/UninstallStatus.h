// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

namespace UninstallStatuses {
Q_NAMESPACE
enum class Kind { scanning, ready, processing, completed, failed };
Q_ENUM_NS(Kind)
} // namespace UninstallStatuses

// Where a session stands. `failed` carries a message and is none of the other four.
class UninstallStatus
{
public:
    using Kind = UninstallStatuses::Kind;

    UninstallStatus() = default;
    static UninstallStatus scanning() { return UninstallStatus(Kind::scanning); }
    static UninstallStatus ready() { return UninstallStatus(Kind::ready); }
    static UninstallStatus processing() { return UninstallStatus(Kind::processing); }
    static UninstallStatus completed() { return UninstallStatus(Kind::completed); }
    static UninstallStatus failed(const QString &message)
    {
        return UninstallStatus(Kind::failed, message);
    }

    [[nodiscard]] Kind kind() const { return m_kind; }
    [[nodiscard]] QString message() const { return m_message; }
    [[nodiscard]] QString caseName() const; // "scanning", "ready", ...

    friend bool operator==(const UninstallStatus &a, const UninstallStatus &b)
    {
        return a.m_kind == b.m_kind && (a.m_kind != Kind::failed || a.m_message == b.m_message);
    }

private:
    explicit UninstallStatus(Kind kind, QString message = {})
        : m_kind(kind), m_message(std::move(message))
    {}

    Kind m_kind = Kind::scanning;
    QString m_message;
};
