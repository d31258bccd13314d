// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

// Where the Mac's "/" and the user's home folder are. Set once by main (from --root/--home)
// before any other thread starts, read-only afterwards. With root "/" every path is the real
// one; with a folder as root the whole program runs against a fake Mac laid out inside it.
class SystemLayout
{
public:
    SystemLayout() = delete;

    // Both absolute; they are cleaned. An empty home means the default for the root.
    static void set(const QString &root, const QString &home = {});
    // Back to the real machine: root "/", the user's own home.
    static void reset();

    [[nodiscard]] static QString root();
    [[nodiscard]] static QString home();
    [[nodiscard]] static bool isFakeRoot();

    // A Mac path ("/Library/Caches", "/usr/sbin/pkgutil") as a real path under root;
    // "~" and "~/..." under home. Other texts are returned as they are.
    [[nodiscard]] static QString path(const QString &macPath);
    // The Mac path of a real path under root ("/System/Applications/Foo.app"), or nothing when
    // the path lies outside root.
    [[nodiscard]] static std::optional<QString> macPath(const QString &realPath);

    // Whether a real path lies under the Mac's "/System/", as written: callers that must see
    // through links resolve them first.
    [[nodiscard]] static bool isInSystemFolder(const QString &realPath);

    // A path in the home folder shown from "~"; on a fake Mac, a path under root is then shown
    // as its Mac path.
    [[nodiscard]] static QString displayPath(const QString &path);

    // The per-user cache and temporary folders, cache first, each without one trailing "/":
    // confstr on macOS, ROOT/.fakemac/darwin-user-dirs on a fake Mac, else none. Read afresh on
    // every call (the fake Mac's file may change), so callers that check often keep a copy.
    [[nodiscard]] static QStringList darwinUserDirectories();

    // The services that act on the user's own files (the Trash, its folder, file icons) know
    // only the real machine; a fake Mac, even on a Mac, keeps the portable code so that
    // everything stays inside its root and home. True on macOS with root "/".
    [[nodiscard]] static bool usesNativeFileServices();

    // Counts set() and reset() calls: whoever keeps tables built from the layout rebuilds them
    // when this changes.
    [[nodiscard]] static quint64 generation();

    // The user's Trash folder: the one NSFileManager names on a real Mac, else HOME/.Trash.
    [[nodiscard]] static QString trashDirectory();

    // The default home for a root: the real home for "/", ROOT/Users/<login> otherwise.
    [[nodiscard]] static QString defaultHome(const QString &root);
};
