// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Measures found items without ever following a symbolic link: a file or link counts its own
// lstat size; a folder the lstat sizes of every file and link below it (hidden ones and the
// contents of packages included, folders adding nothing), or its own size when that sum is 0.
class SizeMeasurer
{
public:
    SizeMeasurer() = delete;

    // 0 when nothing can be read at the path.
    [[nodiscard]] static qint64 itemSize(const QString &path);
};
