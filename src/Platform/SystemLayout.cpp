// SPDX-License-Identifier: MIT
#include "SystemLayout.h"

#include "NativeServices.h"
#include "SafeFile.h"

#include <QDir>
#include <QFile>

#include <atomic>

#include <pwd.h>
#include <unistd.h>

#if defined(Q_OS_MACOS)
#include "mac/FileManagerTrash.h"

#include <vector>
#endif

namespace {
QString g_root = QStringLiteral("/");
QString g_home = QDir::homePath();
std::atomic<quint64> g_generation{0};

QString cleaned(const QString &path)
{
    return QDir::cleanPath(QDir(path).absolutePath());
}

QString loginName()
{
    if (const passwd *entry = getpwuid(getuid()); entry && entry->pw_name)
        return QString::fromLocal8Bit(entry->pw_name);
    const QString user = qEnvironmentVariable("USER");
    return user.isEmpty() ? QStringLiteral("user") : user;
}

// confstr ends each folder with "/"; callers append "/" + name themselves.
QStringList withoutTrailingSlash(QStringList directories)
{
    for (QString &directory : directories) {
        if (directory.endsWith(QLatin1Char('/')))
            directory.chop(1);
    }
    return directories;
}

#if defined(Q_OS_MACOS)
std::optional<QString> confstrText(int name)
{
    const size_t length = confstr(name, nullptr, 0);
    if (length < 1)
        return std::nullopt;
    std::vector<char> buffer(length, '\0');
    if (confstr(name, buffer.data(), length) < 1)
        return std::nullopt;
    return QString::fromUtf8(buffer.data());
}
#endif
} // namespace

void SystemLayout::set(const QString &root, const QString &home)
{
    g_root = cleaned(root);
    g_home = home.isEmpty() ? defaultHome(g_root) : cleaned(home);
    ++g_generation;
}

void SystemLayout::reset()
{
    g_root = QStringLiteral("/");
    g_home = QDir::homePath();
    ++g_generation;
}

quint64 SystemLayout::generation()
{
    return g_generation.load();
}

bool SystemLayout::usesNativeFileServices()
{
    return NativeServices::available() && !isFakeRoot();
}

QString SystemLayout::root()
{
    return g_root;
}

QString SystemLayout::home()
{
    return g_home;
}

bool SystemLayout::isFakeRoot()
{
    return g_root != QLatin1String("/");
}

QString SystemLayout::path(const QString &macPath)
{
    if (macPath == QLatin1String("~"))
        return g_home;
    if (macPath.startsWith(QLatin1String("~/")))
        return g_home + macPath.mid(1);
    if (!macPath.startsWith(QLatin1Char('/')) || !isFakeRoot())
        return macPath;
    return g_root + macPath;
}

std::optional<QString> SystemLayout::macPath(const QString &realPath)
{
    if (!isFakeRoot())
        return realPath.startsWith(QLatin1Char('/')) ? std::optional<QString>(realPath)
                                                     : std::nullopt;
    if (realPath == g_root)
        return QStringLiteral("/");
    if (realPath.startsWith(g_root + QLatin1Char('/')))
        return realPath.mid(g_root.size());
    return std::nullopt;
}

bool SystemLayout::isInSystemFolder(const QString &realPath)
{
    const auto mac = macPath(realPath);
    return mac && mac->startsWith(QLatin1String("/System/"));
}

QString SystemLayout::displayPath(const QString &path)
{
    // The home only as the leading folder: "/Users/alice2" is not "~2" for the home "/Users/alice".
    QString shown = path;
    if (!g_home.isEmpty() && (path == g_home || path.startsWith(g_home + QLatin1Char('/'))))
        shown.replace(0, g_home.size(), QStringLiteral("~"));
    // On a fake Mac the rest is shown as the Mac sees it, without the folder that stands for "/".
    if (isFakeRoot() && shown.startsWith(g_root + QLatin1Char('/')))
        shown.remove(0, g_root.size());
    return shown;
}

QStringList SystemLayout::darwinUserDirectories()
{
    QStringList result;
#if defined(Q_OS_MACOS)
    if (!isFakeRoot()) {
        for (const int name : {_CS_DARWIN_USER_CACHE_DIR, _CS_DARWIN_USER_TEMP_DIR}) {
            if (auto text = confstrText(name))
                result.append(*text);
        }
        return withoutTrailingSlash(result);
    }
#endif
    if (!isFakeRoot())
        return result;
    const auto bytes = SafeFile::read(g_root + QStringLiteral("/.fakemac/darwin-user-dirs"), 65536,
                                      SafeFile::Links::refuse);
    if (!bytes)
        return result;
    const QStringList lines = QString::fromUtf8(*bytes).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        if (!line.isEmpty() && result.size() < 2)
            result.append(line);
    }
    return withoutTrailingSlash(result);
}

QString SystemLayout::trashDirectory()
{
#if defined(Q_OS_MACOS)
    if (usesNativeFileServices()) {
        if (auto trash = FileManagerTrash::trashDirectory())
            return *trash;
    }
#endif
    return g_home + QStringLiteral("/.Trash");
}

QString SystemLayout::defaultHome(const QString &root)
{
    if (cleaned(root) == QLatin1String("/"))
        return QDir::homePath();
    return cleaned(root) + QStringLiteral("/Users/") + loginName();
}
