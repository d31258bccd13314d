// SPDX-License-Identifier: MIT
#pragma once

#include <QSet>
#include <QString>

// The text tests discovery applies to identifiers and names. Pure functions of their arguments.
namespace IdentifierText {

// Words that never identify an app by themselves.
[[nodiscard]] const QSet<QString> &genericNames();
// Second identifier components that many unrelated publishers use ("com.github.x").
[[nodiscard]] const QSet<QString> &sharedNamespaces();

// Lower-cased, with every " ", "-" and "_" removed.
[[nodiscard]] QString normalizedName(const QString &s);
// "abcde12345.com.example.x" -> "com.example.x": a first piece of exactly ten letters or
// digits followed by a non-empty rest loses that piece.
[[nodiscard]] QString removingTeamPrefix(const QString &s);
// At least 5 characters, contains ".", neither starts nor ends with ".".
[[nodiscard]] bool isUsableIdentifier(const QString &s);
// s is id, or continues it with ".", "_", "-" or " ".
[[nodiscard]] bool hasIdentifierPrefix(const QString &s, const QString &id);
// id continues mainID, or starts with the vendor prefix ("com.acme.") when there is one.
[[nodiscard]] bool isSameVendor(const QString &id, const QString &mainID,
                                const QString &vendorPrefix);
// The name without its last extension: "Foo.savedState" -> "Foo"; ".foo" stays ".foo".
[[nodiscard]] QString stem(const QString &name);

} // namespace IdentifierText
