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

// How a text goes on after one of the app's names or identifiers.
enum class Continuation {
    none,      // it does not start with it, or runs on into a longer word ("writerly")
    exact,     // nothing follows
    separated, // " ", "-", "_", "." or "(" follows: "Writer-cli", "Writer (Safe Mode)"
    version,   // a digit follows: "Writer2025.1"
    camel,     // a capital follows a small letter: "WriterUpdater"
};

// How `text` (as written) continues the normalised name `key`; " ", "-" and "_" inside the
// text are skipped as normalizedName drops them, so "Tor Browser-Data" continues "torbrowser".
[[nodiscard]] Continuation nameContinuation(const QString &text, const QString &key);
// How `text` (as written) continues the lower-case identifier `id`.
[[nodiscard]] Continuation identifierContinuation(const QString &text, const QString &id);
// An identifier of fewer than three components ("com.acme", a package "com") names a whole
// namespace: it is matched only whole, never as a prefix.
[[nodiscard]] bool isTooBroadForPrefix(const QString &id);
// The names the system itself keeps one per Mac or per user inside the searched folders
// (ByHost, DiagnosticReports, AddressBook, ...), normalised: no app takes them.
[[nodiscard]] bool isSystemFolderName(const QString &name);
// The shorter names an app answers to: "Microsoft Word" -> "word" for vendor microsoft,
// "CleanShot X" -> "cleanshot", "Rancher Desktop" -> "rancher". Normalised; only worthy ones.
[[nodiscard]] QStringList shortenedNames(const QString &name, const QString &vendor);
// At least three characters and not a word that never identifies an app by itself.
[[nodiscard]] bool isNameWorthy(const QString &normalized);

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
