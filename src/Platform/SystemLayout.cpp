// SPDX-License-Identifier: MIT
#include "SystemLayout.h"

#include "NativeServices.h"
#include "SafeFile.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <array>

#include <pwd.h>
#include <unistd.h>

#if defined(Q_OS_MACOS)
#include "mac/UserTrashFolder.h"

#include <vector>
#endif

namespace {
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

SystemLayout::SystemLayout(const QString &root, const QString &home)
    : m_root(cleaned(root)), m_home(home.isEmpty() ? defaultHome(m_root) : cleaned(home))
{
    m_darwinDirectories = readDarwinUserDirectories();
}

bool SystemLayout::usesNativeFileServices() const
{
    return NativeServices::available() && !isFakeRoot();
}

QString SystemLayout::path(const QString &macPath) const
{
    if (macPath == QLatin1String("~"))
        return m_home;
    if (macPath.startsWith(QLatin1String("~/")))
        return m_home + macPath.mid(1);
    if (!macPath.startsWith(QLatin1Char('/')) || !isFakeRoot())
        return macPath;
    return m_root + macPath;
}

std::optional<QString> SystemLayout::macPath(const QString &realPath) const
{
    if (!isFakeRoot())
        return realPath.startsWith(QLatin1Char('/')) ? std::optional<QString>(realPath)
                                                     : std::nullopt;
    if (realPath == m_root)
        return QStringLiteral("/");
    if (realPath.startsWith(m_root + QLatin1Char('/')))
        return realPath.mid(m_root.size());
    return std::nullopt;
}

bool SystemLayout::isInSystemFolder(const QString &realPath) const
{
    const auto mac = macPath(realPath);
    return mac && mac->startsWith(QLatin1String("/System/"));
}

bool SystemLayout::isInAdminOnlyFolder(const QString &realPath) const
{
    static const std::array<QString, 4> macFolders{
        QStringLiteral("/Library/LaunchDaemons"), QStringLiteral("/Library/LaunchAgents"),
        QStringLiteral("/Library/Application Support"), QStringLiteral("/Library/Preferences")};
    return std::any_of(macFolders.cbegin(), macFolders.cend(),
                       [&](const QString &folder) { return realPath.startsWith(path(folder)); });
}

QString SystemLayout::displayPath(const QString &path) const
{
    // The home only as the leading folder: "/Users/alice2" is not "~2" for the home "/Users/alice".
    QString shown = path;
    if (!m_home.isEmpty() && (path == m_home || path.startsWith(m_home + QLatin1Char('/'))))
        shown.replace(0, m_home.size(), QStringLiteral("~"));
    // On a fake Mac the rest is shown as the Mac sees it, without the folder that stands for "/".
    if (isFakeRoot() && shown.startsWith(m_root + QLatin1Char('/')))
        shown.remove(0, m_root.size());
    return shown;
}

QStringList SystemLayout::readDarwinUserDirectories() const
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
    const auto bytes = SafeFile::read(m_root + QStringLiteral("/.fakemac/darwin-user-dirs"), 65536,
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

QString SystemLayout::trashDirectory() const
{
#if defined(Q_OS_MACOS)
    if (usesNativeFileServices()) {
        if (auto trash = UserTrashFolder::path())
            return *trash;
    }
#endif
    return m_home + QStringLiteral("/.Trash");
}

QString SystemLayout::defaultHome(const QString &root)
{
    if (cleaned(root) == QLatin1String("/"))
        return QDir::homePath();
    return cleaned(root) + QStringLiteral("/Users/") + loginName();
}
