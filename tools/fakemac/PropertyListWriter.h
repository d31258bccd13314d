// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QVariant>

// The writing half of PropertyList, for the fake-Mac builder and the tests: the product only
// ever reads property lists.
namespace PropertyList {

// Empty when the value holds something a property list cannot.
[[nodiscard]] QByteArray toXml(const QVariant &value);
[[nodiscard]] QByteArray toBinary(const QVariant &value);

} // namespace PropertyList
