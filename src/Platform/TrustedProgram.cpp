// SPDX-License-Identifier: MIT
#include "TrustedProgram.h"

#include "FolderHandle.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <sys/stat.h>

namespace {
QString problemWith(const QByteArray &path, bool isProgram, bool allowSticky = true)
{
    struct stat info
    {};
    if (::lstat(path.constData(), &info) != 0)
        return QString::fromLocal8Bit(std::strerror(errno));
    if (S_ISLNK(info.st_mode))
        return QStringLiteral("is a symbolic link");
    if (isProgram ? !S_ISREG(info.st_mode) : !S_ISDIR(info.st_mode))
        return isProgram ? QStringLiteral("is not a file") : QStringLiteral("is not a folder");
    if (info.st_uid != 0)
        return QStringLiteral("is not owned by root");
    const bool othersMayWrite = (info.st_mode & (S_IWGRP | S_IWOTH)) != 0;
    const bool isStickyFolder = !isProgram && allowSticky && (info.st_mode & S_ISVTX) != 0;
    if (othersMayWrite && !isStickyFolder)
        return QStringLiteral("is writable by others");
    return {};
}
} // namespace

QString TrustedProgram::refusal(const QString &path)
{
    const QByteArray bytes = FolderHandle::withoutSystemLinks("/", QFile::encodeName(path));
    if (!bytes.startsWith('/') || bytes.contains("/../") || bytes.contains("/./"))
        return QStringLiteral("Refused to run %1 as root: not a plain absolute path").arg(path);
    // Every prefix, "/" first, then the program itself; links are not followed (a link could
    // be swapped even where its target could not).
    for (qsizetype slash = 0; slash >= 0; slash = bytes.indexOf('/', slash + 1)) {
        const QByteArray folder = slash == 0 ? QByteArray("/") : bytes.left(slash);
        if (const QString problem = problemWith(folder, false); !problem.isEmpty())
            return QStringLiteral("Refused to run %1 as root: %2 %3")
                .arg(path, QFile::decodeName(folder), problem);
    }
    if (const QString problem = problemWith(bytes, true); !problem.isEmpty())
        return QStringLiteral("Refused to run %1 as root: it %2").arg(path, problem);
    return {};
}

QString TrustedProgram::folderRefusal(const QString &path)
{
    const QByteArray bytes = FolderHandle::withoutSystemLinks("/", QFile::encodeName(path));
    if (!bytes.startsWith('/') || bytes.contains("/../") || bytes.contains("/./") ||
        bytes.endsWith("/.."))
        return QStringLiteral("Refused %1: not a plain absolute path").arg(path);
    for (qsizetype slash = 0; slash >= 0; slash = bytes.indexOf('/', slash + 1)) {
        const QByteArray folder = slash == 0 ? QByteArray("/") : bytes.left(slash);
        if (const QString problem = problemWith(folder, false); !problem.isEmpty())
            return QStringLiteral("Refused %1: %2 %3")
                .arg(path, QFile::decodeName(folder), problem);
    }
    if (const QString problem = problemWith(bytes, false, false); !problem.isEmpty())
        return QStringLiteral("Refused %1: it %2").arg(path, problem);
    return {};
}
