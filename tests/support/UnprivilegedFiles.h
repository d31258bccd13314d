// SPDX-License-Identifier: MIT
#pragma once

#include <sys/fsuid.h>
#include <unistd.h>

// Root reads any folder whatever its mode. While this lives, the calling thread's file
// accesses are made as "nobody", so a mode-000 folder is refused as it is for a user. The
// folders above what a test reads must be open to others.
class UnprivilegedFiles
{
public:
    UnprivilegedFiles() : m_switched(::geteuid() == 0)
    {
        if (m_switched) {
            ::setfsgid(65534); // else the root group's bits would still apply
            ::setfsuid(65534);
        }
    }
    ~UnprivilegedFiles()
    {
        if (m_switched) {
            ::setfsuid(0);
            ::setfsgid(0);
        }
    }
    UnprivilegedFiles(const UnprivilegedFiles &) = delete;
    UnprivilegedFiles &operator=(const UnprivilegedFiles &) = delete;

private:
    bool m_switched;
};
