// SPDX-License-Identifier: MIT
#include "RootMoveJournal.h"

#include <QList>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {
// A journal past this is not one the helper wrote in any plausible life of a Mac.
constexpr qint64 kMaximumJournal = qint64(64) << 20;
constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

bool isPrivateTo(int fd, uid_t owner, bool isFolder)
{
    struct stat info
    {};
    return ::fstat(fd, &info) == 0 && (isFolder ? S_ISDIR(info.st_mode) : S_ISREG(info.st_mode)) &&
           info.st_uid == owner && (info.st_mode & 077) == 0 && (isFolder || info.st_nlink == 1);
}

// No one but the owner may rename or replace what is in it.
bool isSafeParent(int fd, uid_t owner)
{
    struct stat info
    {};
    return ::fstat(fd, &info) == 0 && S_ISDIR(info.st_mode) &&
           (info.st_uid == 0 || info.st_uid == owner) && (info.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

// `name` in `parent`, made with `mode` when missing; never through a link.
FolderHandle folderIn(int parent, const char *name, mode_t mode)
{
    if (::mkdirat(parent, name, mode) != 0 && errno != EEXIST)
        return {};
    return FolderHandle(::openat(parent, name, kFolderFlags));
}

QByteArray lineFor(RootMoveJournal::Identity identity, const QByteArray &path)
{
    return QByteArray::number(qulonglong(identity.device)) + ' ' +
           QByteArray::number(qulonglong(identity.inode)) + ' ' + path.toHex() + '\n';
}

// Held for the life of one operation: two helpers of two prompts may run at once.
class Lock
{
public:
    explicit Lock(int fd) : m_fd(fd) { m_held = ::flock(m_fd, LOCK_EX) == 0; }
    ~Lock()
    {
        if (m_held)
            ::flock(m_fd, LOCK_UN);
    }
    Lock(const Lock &) = delete;
    Lock &operator=(const Lock &) = delete;
    [[nodiscard]] bool held() const { return m_held; }

private:
    int m_fd;
    bool m_held = false;
};

bool writeAll(int fd, const QByteArray &bytes)
{
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.constData() + done, size_t(bytes.size() - done));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        done += n;
    }
    return true;
}
} // namespace

RootMoveJournal::RootMoveJournal(RootMoveJournal &&other) noexcept
    : m_folder(std::move(other.m_folder)), m_staging(std::move(other.m_staging)),
      m_file(std::exchange(other.m_file, -1)), m_owner(other.m_owner)
{}

RootMoveJournal &RootMoveJournal::operator=(RootMoveJournal &&other) noexcept
{
    if (this != &other) {
        if (m_file >= 0)
            ::close(m_file);
        m_folder = std::move(other.m_folder);
        m_staging = std::move(other.m_staging);
        m_file = std::exchange(other.m_file, -1);
        m_owner = other.m_owner;
    }
    return *this;
}

RootMoveJournal::~RootMoveJournal()
{
    if (m_file >= 0)
        ::close(m_file);
}

Result<RootMoveJournal> RootMoveJournal::open(const FolderHandle &root, uid_t owner)
{
    const auto notPrivate = Failure(QStringLiteral("The administrator's record of moved items is "
                                                   "not private"));
    RootMoveJournal journal;
    journal.m_owner = owner;
    FolderHandle parent(::fcntl(root.fd(), F_DUPFD_CLOEXEC, 0));
    // Library and Application Support exist on every Mac; a bare fake one gets them.
    for (const char *name : {"Library", "Application Support"}) {
        if (!parent.isOpen() || !isSafeParent(parent.fd(), owner))
            break;
        parent = folderIn(parent.fd(), name, 0755);
    }
    if (parent.isOpen() && isSafeParent(parent.fd(), owner))
        journal.m_folder = folderIn(parent.fd(), "Quenzo", 0700);
    if (!journal.m_folder.isOpen() || !isPrivateTo(journal.m_folder.fd(), owner, true))
        return notPrivate;
    journal.m_staging = folderIn(journal.m_folder.fd(), "staging", 0700);
    journal.m_file =
        ::openat(journal.m_folder.fd(), "moved-as-root",
                 O_RDWR | O_CREAT | O_APPEND | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600);
    if (!journal.m_staging.isOpen() || !isPrivateTo(journal.m_staging.fd(), owner, true) ||
        journal.m_file < 0 || !isPrivateTo(journal.m_file, owner, false))
        return notPrivate;
    return journal;
}

std::optional<QByteArray> RootMoveJournal::readAll() const
{
    QByteArray bytes;
    char buffer[65536];
    for (off_t offset = 0;;) {
        const ssize_t n = ::pread(m_file, buffer, sizeof buffer, offset);
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0 || bytes.size() + n > kMaximumJournal)
            return std::nullopt;
        if (n == 0)
            return bytes;
        bytes.append(buffer, n);
        offset += n;
    }
}

bool RootMoveJournal::append(Identity identity, const QByteArray &originalPath) const
{
    const Lock lock(m_file);
    return lock.held() && writeAll(m_file, lineFor(identity, originalPath));
}

bool RootMoveJournal::contains(Identity identity, const QByteArray &originalPath) const
{
    const Lock lock(m_file);
    const auto bytes = lock.held() ? readAll() : std::nullopt;
    const QByteArray line = lineFor(identity, originalPath);
    return bytes && (bytes->startsWith(line) || bytes->contains('\n' + line));
}

bool RootMoveJournal::remove(Identity identity, const QByteArray &originalPath) const
{
    const Lock lock(m_file);
    const auto bytes = lock.held() ? readAll() : std::nullopt;
    if (!bytes)
        return false;
    const QByteArray line = lineFor(identity, originalPath);
    QByteArray kept;
    for (const QByteArray &each : bytes->split('\n'))
        if (!each.isEmpty() && each + '\n' != line)
            kept += each + '\n';
    return ::ftruncate(m_file, 0) == 0 && writeAll(m_file, kept);
}
