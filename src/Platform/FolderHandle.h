// SPDX-License-Identifier: MIT
#pragma once

#include "Core/Result.h"

#include <QByteArray>
#include <QString>
#include <optional>
#include <sys/types.h>

// An open folder (a descriptor), reached without following any symbolic link on the way, so
// that what is done relative to it cannot be steered elsewhere by a link planted later.
class FolderHandle
{
public:
    FolderHandle() = default;
    explicit FolderHandle(int fd) : m_fd(fd) {}
    FolderHandle(FolderHandle &&other) noexcept : m_fd(std::exchange(other.m_fd, -1)) {}
    FolderHandle &operator=(FolderHandle &&other) noexcept;
    FolderHandle(const FolderHandle &) = delete;
    FolderHandle &operator=(const FolderHandle &) = delete;
    ~FolderHandle();

    [[nodiscard]] int fd() const { return m_fd; }
    [[nodiscard]] bool isOpen() const { return m_fd >= 0; }

    // `path` (absolute) walked from "/" one component at a time; a link, a missing folder or
    // anything but a folder anywhere on the way gives nothing, with the reason in `error`.
    // The caller resolves the Mac's own system links (/var, /tmp, /etc) first.
    [[nodiscard]] static Result<FolderHandle> open(const QByteArray &path);
    // `relative` (components separated by "/") walked from this folder in the same way.
    [[nodiscard]] Result<FolderHandle> openBelow(const QByteArray &relative) const;
    // The owner of the folder itself.
    [[nodiscard]] std::optional<uid_t> owner() const;

    // "ROOT/var/x" -> "ROOT/private/var/x" where the Mac whose "/" is `root` (real or fake) lays
    // these out as links into /private; any other path unchanged.
    [[nodiscard]] static QByteArray withoutSystemLinks(const QByteArray &root,
                                                       const QByteArray &path);

private:
    int m_fd = -1;
};
