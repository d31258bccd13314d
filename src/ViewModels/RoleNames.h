// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QHash>
#include <QMetaEnum>

// A list model's role names for QML, taken from its registered `Role` enum: each role is named
// as its enumerator, so the C++ and the QML names cannot drift apart.
template <typename Role> [[nodiscard]] QHash<int, QByteArray> roleNamesOf()
{
    QHash<int, QByteArray> result;
    const QMetaEnum roles = QMetaEnum::fromType<Role>();
    for (int i = 0; i < roles.keyCount(); ++i)
        result.insert(roles.value(i), roles.key(i));
    return result;
}
