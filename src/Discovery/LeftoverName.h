// SPDX-License-Identifier: MIT
#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

// What the name of an entry left in a Library folder says about the app it came from, without
// the app at hand: the reverse-DNS identifier it carries, or the words of a plain name.
struct LeftoverName
{
    QString identifier; // lower-case, without team, group or file-type parts; empty for plain names
    QString family;     // the first three components of identifier: one app and its helpers
    QString appPart;    // the third component as written ("Acrobat" of "com.adobe.Acrobat.Pro")
    QString vendor;     // the second component, lower-case, when it names a real publisher
    QStringList words;  // a plain name's words, lower-case, split at separators, case and digits

    [[nodiscard]] bool isIdentifier() const { return !identifier.isEmpty(); }
    // The identifier names a part any app of the vendor may have ("com.acme.updater",
    // "com.acme.SyncHelper", "com.acme.suite.helper"), not one app.
    [[nodiscard]] bool isVendorWide() const;
    // The app's name as the identifier tells it: its third part, or the vendor's when that part
    // is no name ("7F3A", "app").
    [[nodiscard]] QString appName() const;
    // The first word of the third part, versions left off: "tower" of "com.acme.Tower3".
    [[nodiscard]] QString appWord() const;

    [[nodiscard]] static LeftoverName parse(const QString &name);
    // A display name as the words of `startsWithAny` see it: "Docker Desktop" -> dockerdesktop.
    [[nodiscard]] static QString nameKey(const QString &displayName);

    // "Docker Desktop" -> docker, dockerdesktop: the run-together texts of the first words,
    // those of at least `minimumSize` characters.
    [[nodiscard]] QStringList leadingWords(qsizetype minimumSize) const;
    // Whether the name is one of `names`, or starts with one of them followed by more words.
    [[nodiscard]] bool startsWithAny(const QSet<QString> &names) const;
};
