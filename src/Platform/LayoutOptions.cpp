// SPDX-License-Identifier: MIT
#include "LayoutOptions.h"

#include <QFileInfo>

std::optional<QString> LayoutOptions::folderError(const QString &option, const QString &folder)
{
    const QFileInfo info(folder);
    if (!info.exists())
        return option + QLatin1Char(' ') + folder + QStringLiteral(": no such folder");
    if (!info.isDir())
        return option + QLatin1Char(' ') + folder + QStringLiteral(": not a folder");
    return std::nullopt;
}

SystemLayout LayoutOptions::layout(const QString &root, const QString &home)
{
    return SystemLayout(root.isEmpty() ? QStringLiteral("/") : QFileInfo(root).absoluteFilePath(),
                        home.isEmpty() ? QString() : QFileInfo(home).absoluteFilePath());
}
