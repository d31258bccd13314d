// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// What a file tree holds, to tell that an item arrived somewhere unchanged: a hash over the
// names, contents and link targets below a path (links are not followed).
class TreeFingerprint
{
public:
    TreeFingerprint() = delete;

    // Empty when nothing is at `path`.
    [[nodiscard]] static QByteArray of(const QString &path);
    // Every file, folder and link below `root`, as paths relative to it, sorted.
    [[nodiscard]] static QStringList entries(const QString &root);
};
