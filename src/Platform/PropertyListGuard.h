// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

// Structural limits checked before bytes reach the property-list parser, which recurses without
// bound on deep nesting and expands every shared object of a binary list afresh. Both checks
// are linear in the input and allocate no more than the object count.
namespace PropertyListGuard {

// No property list we read nests this deep.
inline constexpr int kMaximumDepth = 256;
// Binary lists may share objects; the expanded tree must stay below this many nodes.
inline constexpr quint64 kMaximumNodes = 1'000'000;
// Binary lists with more objects are refused before anything is allocated for them.
inline constexpr quint64 kMaximumObjects = 1'000'000;

// Whether an XML list nests dictionaries and arrays no deeper than kMaximumDepth.
[[nodiscard]] bool isXmlWithinLimits(const QByteArray &bytes);
// Whether a binary list's trailer, offset table and references are in bounds, acyclic and
// within the depth and node limits.
[[nodiscard]] bool isBinaryWithinLimits(const QByteArray &bytes);

} // namespace PropertyListGuard
