// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Installer package identifiers ("com.example.app.pkg"): discovery lists receipts and asks the
// package tool by them, removal hands them to `pkgutil --forget` as root, so both hold the same
// idea of which names are safe to pass on.
namespace PackageIdentifier {

// Letters, digits, marks, ".", "_" and "-", starting with a letter or digit; never an
// operating-system receipt ("com.apple.pkg.", in any case).
[[nodiscard]] bool isValid(const QString &id);

} // namespace PackageIdentifier
