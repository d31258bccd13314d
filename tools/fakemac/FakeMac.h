// SPDX-License-Identifier: MIT
#pragma once

#include "Platform/SystemLayout.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantMap>
#include <optional>

// Lays out a fake Mac under a folder: its "/" is the folder, the user's home is
// ROOT/Users/<user>. Tests build one in a QTemporaryDir; the demo builds one from a JSON
// description kept in the repository. Paths given to it are Mac paths: "/..." lies under the
// root, "~/..." under the home.
class FakeMac
{
public:
    enum class PlistFormat { xml, binary };

    struct App
    {
        QString path;       // Mac path of the bundle, e.g. "/Applications/Writer.app"
        QString identifier; // CFBundleIdentifier; empty leaves it out
        QVariant version;   // CFBundleShortVersionString; invalid leaves it out
        QString executable; // CFBundleExecutable; a small file is written in Contents/MacOS
        QVariantMap info;   // further Info.plist keys
        PlistFormat format = PlistFormat::xml;
        bool icon = false; // an icns with one PNG entry, named by CFBundleIconFile
        // With app groups the executable is a signed Mach-O granting them (see MachOBuilder).
        QStringList appGroups;
        bool universal = false; // the signed executable as a universal binary
        bool indexed = true;    // known to the mdfind stand-in (when it has an identifier)
    };

    explicit FakeMac(const QString &root, const QString &user = QStringLiteral("tester"));

    [[nodiscard]] QString root() const { return m_root; }
    [[nodiscard]] QString home() const { return m_home; }
    // The real path of a Mac path.
    [[nodiscard]] QString path(const QString &macPath) const;
    // The real path of `name` in the user's Trash.
    [[nodiscard]] QString trash(const QString &name) const;
    // A Mac path below `macPath`, of folders named by 50 letters, whose real path is at least
    // `bytes` long: deeper than most tools expect. Nothing is created.
    [[nodiscard]] QString deepBelow(const QString &macPath, qsizetype bytes = 1000) const;
    // `prefix` followed by two-byte letters, then padding: exactly 255 bytes in UTF-8, the
    // longest name a Mac's disk takes.
    [[nodiscard]] static QString longestName(const QString &prefix);
    // Everything below the root but the fake Mac's own records, relative and sorted.
    [[nodiscard]] QStringList entries() const;
    // The layout through which the program sees this fake Mac; its per-user folders are read
    // now, so take it after setDarwinUserDirectories.
    [[nodiscard]] SystemLayout layout() const;

    // Each returns the real path written.
    QString addApp(const App &app);
    QString addFolder(const QString &macPath);
    QString addFile(const QString &macPath, qint64 size = 0);
    QString addTextFile(const QString &macPath, const QByteArray &content);
    QString addSymlink(const QString &macPath, const QString &target);
    QString addPlist(const QString &macPath, const QVariant &content,
                     PlistFormat format = PlistFormat::xml);
    // The per-user cache and temporary folders (Mac paths, created, named as confstr gives them).
    void setDarwinUserDirectories(const QString &cacheMacPath, const QString &tempMacPath);
    // A stand-in tool at a Mac path: a /bin/sh script with the given body (no "#!" line needed).
    // The script starts by recording its call, see calls().
    QString addTool(const QString &macPath, const QByteArray &script);
    // Every stand-in call so far, oldest first: the tool's Mac path, then its arguments. Read
    // from ROOT/.fakemac/calls.log, one JSON array per line.
    [[nodiscard]] QList<QStringList> calls() const;
    // Shell code that appends the script's own call ($0 as a Mac path, then "$@") to calls.log.
    [[nodiscard]] static QByteArray callRecorder();

    // Lays out everything a JSON description names (see docs/fake-mac.md); what is malformed
    // in it, if anything.
    [[nodiscard]] std::optional<QString> apply(const QJsonObject &description);

private:
    QString m_root;
    QString m_home;
};
