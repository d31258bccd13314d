// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Whether a program may be run as root: the file and every folder above it are owned by root
// and writable by nobody else, so no one but root can change what runs. A folder writable by
// all is accepted only when root owns it and its sticky bit is set (as /tmp): others may add
// entries there but cannot rename or replace root's.
class TrustedProgram
{
public:
    TrustedProgram() = delete;

    // Empty when `path` (absolute) passes; otherwise why not, naming the offending item.
    [[nodiscard]] static QString refusal(const QString &path);
    // The same for a folder whose contents root will trust (a fake Mac's root): the folder
    // itself must not be writable by others even when sticky.
    [[nodiscard]] static QString folderRefusal(const QString &path);
};
