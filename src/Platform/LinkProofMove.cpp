// SPDX-License-Identifier: MIT
#include "LinkProofMove.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#if defined(__APPLE__)
#include <stdio.h>
#else
#include <sys/syscall.h>
#endif

namespace {
// Beyond this many taken names something is wrong (or hostile): give up rather than spin.
constexpr int kMaximumNumberedName = 10'000;

int renameWithoutReplacing(int fromFolder, const char *from, int toFolder, const char *to)
{
#if defined(__APPLE__)
    return ::renameatx_np(fromFolder, from, toFolder, to, RENAME_EXCL);
#else
    // Called through syscall(): older C libraries lack the renameat2 wrapper.
    constexpr unsigned kNoReplace = 1; // RENAME_NOREPLACE
    return int(::syscall(SYS_renameat2, fromFolder, from, toFolder, to, kNoReplace));
#endif
}

std::optional<struct stat> entryStat(int folder, const QByteArray &name)
{
    struct stat info
    {};
    if (::fstatat(folder, name.constData(), &info, AT_SYMLINK_NOFOLLOW) != 0)
        return std::nullopt;
    return info;
}

bool isSameEntry(const struct stat &a, const struct stat &b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

bool isBelow(const QByteArray &path, const QByteArray &folder)
{
    return folder == "/" ? path.startsWith('/') && path.size() > 1
                         : path.startsWith(folder + '/') && path.size() > folder.size() + 1;
}

QString errorText(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}
} // namespace

Result<LinkProofMove> LinkProofMove::open(const QByteArray &root, const QByteArray &home,
                                          uid_t user)
{
    LinkProofMove result;
    result.m_rootPath = root;
    result.m_homePath = FolderHandle::withoutSystemLinks(root, home);
    result.m_trashPath = result.m_homePath + "/.Trash";
    auto rootFolder = FolderHandle::open(result.m_rootPath);
    if (!rootFolder)
        return Failure(rootFolder.error());
    auto homeFolder = FolderHandle::open(result.m_homePath);
    if (!homeFolder)
        return Failure(homeFolder.error());
    if (homeFolder->owner() != user)
        return Failure(QStringLiteral("The home folder does not belong to the user"));
    auto trashFolder = homeFolder->openBelow(".Trash");
    if (!trashFolder || trashFolder->owner() != user)
        return Failure(QStringLiteral("The Trash is not a folder of the user's own"));
    result.m_root = std::move(*rootFolder);
    result.m_home = std::move(*homeFolder);
    result.m_trash = std::move(*trashFolder);
    return result;
}

Result<LinkProofMove::Entry> LinkProofMove::entryOf(const QByteArray &path) const
{
    const QByteArray resolved = FolderHandle::withoutSystemLinks(m_rootPath, path);
    const qsizetype slash = resolved.lastIndexOf('/');
    const QByteArray name = resolved.mid(slash + 1);
    if (slash < 0 || name.isEmpty() || name == "." || name == "..")
        return Failure(QStringLiteral("Not a path to an item"));
    const QByteArray parent = slash == 0 ? QByteArray("/") : resolved.left(slash);
    // The user's own items are reached from their home, everything else from the root.
    const bool inHome = parent == m_homePath || isBelow(parent, m_homePath);
    const FolderHandle &base = inHome ? m_home : m_root;
    const QByteArray &basePath = inHome ? m_homePath : m_rootPath;
    if (parent != basePath && !isBelow(parent, basePath))
        return Failure(QStringLiteral("Outside the Mac's folders"));
    auto folder = base.openBelow(parent.mid(basePath == "/" ? 1 : basePath.size()));
    if (!folder)
        return Failure(folder.error());
    return Entry{std::move(*folder), name};
}

LinkProofMove::Outcome LinkProofMove::moveToTrash(const QByteArray &source) const
{
    const auto entry = entryOf(source);
    if (!entry)
        return Outcome{false, {}, entry.error()};
    return rename(entry->folder.fd(), entry->name, m_trash, m_trashPath, entry->name, true);
}

LinkProofMove::Outcome LinkProofMove::move(const QByteArray &source,
                                           const QByteArray &destination) const
{
    const auto from = entryOf(source);
    if (!from)
        return Outcome{false, {}, from.error()};
    const auto to = entryOf(destination);
    if (!to)
        return Outcome{false, {}, to.error()};
    const QByteArray resolved = FolderHandle::withoutSystemLinks(m_rootPath, destination);
    return rename(from->folder.fd(), from->name, to->folder,
                  resolved.left(resolved.lastIndexOf('/')), to->name, false);
}

LinkProofMove::Outcome LinkProofMove::moveInto(const QByteArray &source, const FolderHandle &folder,
                                               const QByteArray &name) const
{
    const auto from = entryOf(source);
    if (!from)
        return Outcome{false, {}, from.error()};
    return rename(from->folder.fd(), from->name, folder, {}, name, false);
}

LinkProofMove::Outcome LinkProofMove::moveOut(const FolderHandle &folder, const QByteArray &name,
                                              const QByteArray &destination) const
{
    const auto to = entryOf(destination);
    if (!to)
        return Outcome{false, {}, to.error()};
    const QByteArray resolved = FolderHandle::withoutSystemLinks(m_rootPath, destination);
    return rename(folder.fd(), name, to->folder, resolved.left(resolved.lastIndexOf('/')), to->name,
                  false);
}

LinkProofMove::Outcome LinkProofMove::moveOutToTrash(const FolderHandle &folder,
                                                     const QByteArray &name,
                                                     const QByteArray &wanted) const
{
    return rename(folder.fd(), name, m_trash, m_trashPath, wanted, true);
}

LinkProofMove::Outcome LinkProofMove::rename(int sourceFolder, const QByteArray &sourceName,
                                             const FolderHandle &folder,
                                             const QByteArray &folderPath, const QByteArray &name,
                                             bool pickFreeName) const
{
    const auto before = entryStat(sourceFolder, sourceName);
    if (!before) {
        Outcome missing{false, {}, errorText(errno)};
        missing.missing = errno == ENOENT;
        return missing;
    }
    QByteArray candidate = name;
    for (int n = 2;; ++n) {
        if (renameWithoutReplacing(sourceFolder, sourceName.constData(), folder.fd(),
                                   candidate.constData()) == 0)
            break;
        if (errno != EEXIST || !pickFreeName || n > kMaximumNumberedName)
            return Outcome{false, {}, errorText(errno)};
        candidate = numberedName(name, n);
    }
    // Counted only when the very entry seen before is now in the destination and gone from
    // where it was.
    const auto moved = entryStat(folder.fd(), candidate);
    const auto left = entryStat(sourceFolder, sourceName);
    if (!moved || !isSameEntry(*before, *moved) || (left && isSameEntry(*before, *left)))
        return Outcome{false, {}, QStringLiteral("The item changed while it was moved")};
    Outcome done{true, folderPath + '/' + candidate, {}};
    done.device = moved->st_dev;
    done.inode = moved->st_ino;
    return done;
}

bool LinkProofMove::isPlainFile(const QByteArray &path) const
{
    const auto entry = entryOf(path);
    const auto info = entry ? entryStat(entry->folder.fd(), entry->name) : std::nullopt;
    return info && S_ISREG(info->st_mode);
}

bool LinkProofMove::isSystemOnlyFile(const QByteArray &path) const
{
    const auto entry = entryOf(path);
    const auto info = entry ? entryStat(entry->folder.fd(), entry->name) : std::nullopt;
    return info && S_ISREG(info->st_mode) && info->st_nlink == 1 &&
           (info->st_mode & (S_IWGRP | S_IWOTH)) == 0 &&
           (info->st_uid == 0 || info->st_uid == m_root.owner());
}

QByteArray LinkProofMove::numberedName(const QByteArray &name, int n)
{
    // A leading dot starts a hidden name, not an extension.
    const qsizetype dot = name.lastIndexOf('.');
    const bool hasExtension = dot > 0 && dot + 1 < name.size();
    const QByteArray base = hasExtension ? name.left(dot) : name;
    const QByteArray extension = hasExtension ? name.mid(dot) : QByteArray();
    return base + ' ' + QByteArray::number(n) + extension;
}
