// SPDX-License-Identifier: MIT
#include "TrashNaming.h"

#include <QFile>

#include <sys/stat.h>

namespace {
QString lastComponent(const QString &path)
{
    QString trimmed = path;
    while (trimmed.size() > 1 && trimmed.endsWith(QLatin1Char('/')))
        trimmed.chop(1);
    return trimmed.mid(trimmed.lastIndexOf(QLatin1Char('/')) + 1);
}
} // namespace

QString TrashNaming::freeDestination(const QString &trashDirectory, const QString &itemPath,
                                     QSet<QString> &reserved)
{
    const QString name = lastComponent(itemPath);
    // A leading dot starts a hidden name, not an extension.
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    const bool hasExtension = dot > 0 && dot + 1 < name.size();
    const QString base = hasExtension ? name.left(dot) : name;
    const QString extension = hasExtension ? name.mid(dot) : QString();
    QString candidate = trashDirectory + QLatin1Char('/') + name;
    for (int n = 2; reserved.contains(candidate) || itemExists(candidate); ++n)
        candidate = trashDirectory + QLatin1Char('/') + base + QLatin1Char(' ') +
                    QString::number(n) + extension;
    reserved.insert(candidate);
    return candidate;
}

bool TrashNaming::itemExists(const QString &path)
{
    struct stat info
    {};
    return ::lstat(QFile::encodeName(path).constData(), &info) == 0;
}
