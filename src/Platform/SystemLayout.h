// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

// Where the Mac's "/" and the user's home folder are, and what follows from them: the per-user
// cache and temporary folders, the Trash, the Mac's own system folders. A value: built once at
// start-up (from --root/--home, or "/" for the real machine) and handed to whatever needs it.
// With root "/" every path is the real one; with a folder as root the whole program runs against
// a fake Mac laid out inside it.
class SystemLayout
{
public:
    // Both absolute; they are cleaned. An empty home means the default for the root. Reads the
    // per-user folders once, here.
    explicit SystemLayout(const QString &root, const QString &home = {});

    [[nodiscard]] QString root() const { return m_root; }
    [[nodiscard]] QString home() const { return m_home; }
    [[nodiscard]] bool isFakeRoot() const { return m_root != QLatin1String("/"); }

    // A Mac path ("/Library/Caches", "/usr/sbin/pkgutil") as a real path under root;
    // "~" and "~/..." under home. Other texts are returned as they are.
    [[nodiscard]] QString path(const QString &macPath) const;
    // The Mac path of a real path under root ("/System/Applications/Foo.app"), or nothing when
    // the path lies outside root.
    [[nodiscard]] std::optional<QString> macPath(const QString &realPath) const;

    // Whether a real path lies under the Mac's "/System/", as written: callers that must see
    // through links resolve them first.
    [[nodiscard]] bool isInSystemFolder(const QString &realPath) const;
    // Whether a real path lies in one of the Mac's Library folders that only an administrator
    // may change (launch agents and daemons, application support, preferences), as written.
    [[nodiscard]] bool isInAdminOnlyFolder(const QString &realPath) const;

    // A path in the home folder shown from "~"; on a fake Mac, a path under root is then shown
    // as its Mac path.
    [[nodiscard]] QString displayPath(const QString &path) const;

    // The per-user cache and temporary folders, cache first, each without one trailing "/":
    // confstr on macOS, ROOT/.fakemac/darwin-user-dirs on a fake Mac, else none.
    [[nodiscard]] const QStringList &darwinUserDirectories() const { return m_darwinDirectories; }

    // The services that act on the user's own files (the Trash, its folder, file icons) know
    // only the real machine; a fake Mac, even on a Mac, keeps the portable code so that
    // everything stays inside its root and home. True on macOS with root "/".
    [[nodiscard]] bool usesNativeFileServices() const;

    // The user's Trash folder: the one NSFileManager names on a real Mac, else HOME/.Trash.
    [[nodiscard]] QString trashDirectory() const;

    // The default home for a root: the real home for "/", ROOT/Users/<login> otherwise.
    [[nodiscard]] static QString defaultHome(const QString &root);

private:
    [[nodiscard]] QStringList readDarwinUserDirectories() const;

    QString m_root;
    QString m_home;
    QStringList m_darwinDirectories;
};
