// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <utility>

// An error a caller tells apart by its kind, with the detail its user's text is built from. The
// errors of the core derive from it, each with its named constructors and message().
template <typename Kind> class TypedError
{
public:
    [[nodiscard]] Kind kind() const { return m_kind; }

    friend bool operator==(const TypedError &, const TypedError &) = default;

protected:
    explicit TypedError(Kind kind, QString detail = {}) : m_kind(kind), m_detail(std::move(detail))
    {}
    [[nodiscard]] const QString &detail() const { return m_detail; }

private:
    Kind m_kind;
    QString m_detail;
};
