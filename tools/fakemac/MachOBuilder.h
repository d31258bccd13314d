// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QStringList>

// Writes small signed Mach-O executables for tests and fake Macs: a header, one
// LC_CODE_SIGNATURE load command and a code-signature SuperBlob whose entitlements slot holds
// an XML property list. Only the parts the entitlements reader looks at are real.
namespace MachOBuilder {

enum class Layout { thin64, thin32, universal, universal64 };

// The entitlements property list granting the app groups.
[[nodiscard]] QByteArray entitlementsPlist(const QStringList &appGroups);
// A signature SuperBlob with a (dummy) code directory and the entitlements blob.
[[nodiscard]] QByteArray superBlob(const QByteArray &entitlements);
// A thin 64-bit little-endian executable whose signature carries `entitlements`.
[[nodiscard]] QByteArray thin(const QByteArray &entitlements, bool is64 = true);
// A universal binary of an unsigned x86_64 slice and a signed arm64 slice.
[[nodiscard]] QByteArray universal(const QByteArray &entitlements, bool fat64 = false);
// A thin executable without any code signature.
[[nodiscard]] QByteArray unsignedThin();

// The executable of `layout` granting `appGroups`.
[[nodiscard]] QByteArray executable(const QStringList &appGroups, Layout layout = Layout::thin64);

} // namespace MachOBuilder
