// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class FakeMac;

// Names and paths at the file system's limits.
namespace LongNames {

// `prefix` followed by two-byte letters, then padding: exactly 255 bytes in UTF-8.
[[nodiscard]] QString name255(const QString &prefix);
// A Mac path below `macPath`, of folders named by 50 letters, whose real path is at least
// `bytes` long. Nothing is created.
[[nodiscard]] QString deepBelow(const FakeMac &mac, const QString &macPath, qsizetype bytes = 1000);

} // namespace LongNames
