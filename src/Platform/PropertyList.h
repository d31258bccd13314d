// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>
#include <optional>

// Property lists (XML and binary) read into Qt values: dictionaries as QVariantMap, arrays as
// QVariantList, strings as QString, integers as qint64 (or quint64 beyond its range), reals as
// double, booleans as bool, dates as QDateTime (UTC), data as QByteArray. Other forms, garbage
// and truncated input give nothing; bytes are untrusted and never crash the reader.
namespace PropertyList {

// Refuses input larger than this; no property list we read comes close.
inline constexpr qint64 kMaximumSize = 16 * 1024 * 1024;

[[nodiscard]] std::optional<QVariant> parse(const QByteArray &bytes);
// Reads and parses a file; nothing when it cannot be read, is too large or does not parse.
[[nodiscard]] std::optional<QVariant> read(const QString &path);
// The same, when the top level must be a dictionary.
[[nodiscard]] std::optional<QVariantMap> readDictionary(const QString &path);

} // namespace PropertyList
