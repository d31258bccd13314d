// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QStringList>
#include <QVariantMap>
#include <optional>

class QIODevice;

// Reads the entitlements embedded in a Mach-O executable's code signature: thin (32- or 64-bit,
// either byte order) and universal binaries, LC_CODE_SIGNATURE -> SuperBlob -> entitlements
// slot -> property list. The bytes are untrusted: every offset and length is checked against
// the slice and the file, and nothing larger than the caps below is ever read.
namespace MachOReader {

inline constexpr quint32 kMaximumArchitectures = 32;
inline constexpr quint32 kMaximumLoadCommandBytes = 4 * 1024 * 1024;
inline constexpr quint32 kMaximumBlobCount = 256;
inline constexpr quint32 kMaximumEntitlementsBytes = 1024 * 1024;

// The entitlements property list of the first architecture that has one.
[[nodiscard]] std::optional<QByteArray> entitlementsData(QIODevice &device);
[[nodiscard]] std::optional<QVariantMap> entitlements(const QString &executablePath);
// "com.apple.security.application-groups", texts only; empty on any failure.
[[nodiscard]] QStringList applicationGroups(const QString &executablePath);

} // namespace MachOReader
