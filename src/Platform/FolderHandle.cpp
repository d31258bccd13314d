// SPDX-License-Identifier: MIT
#include "FolderHandle.h"

#include <QList>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {
// O_PATH where there is one: walking needs only the right to pass through a folder (mode 0711),
// not to list it.
#if defined(O_PATH)
constexpr int kFolderFlags = O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
#else
constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
#endif

QString reasonFor(int error)
{
    // ELOOP/ENOTDIR from O_NOFOLLOW|O_DIRECTORY: the component is a link or not a folder.
    if (error == ELOOP || error == ENOTDIR)
        return QStringLiteral("A folder on the way is a link or not a folder");
    return QString::fromLocal8Bit(std::strerror(error));
}

// Whether `linkPath` is a link on this Mac that stands for `/private/<name>` (a real Mac always;
// a fake Mac when laid out the same way).
bool isSystemLink(const QByteArray &root, const QByteArray &name)
{
    struct stat info
    {};
    const QByteArray link = root + '/' + name;
    return ::lstat(link.constData(), &info) == 0 && S_ISLNK(info.st_mode);
}
} // namespace

FolderHandle &FolderHandle::operator=(FolderHandle &&other) noexcept
{
    if (this != &other) {
        if (m_fd >= 0)
            ::close(m_fd);
        m_fd = std::exchange(other.m_fd, -1);
    }
    return *this;
}

FolderHandle::~FolderHandle()
{
    if (m_fd >= 0)
        ::close(m_fd);
}

QByteArray FolderHandle::withoutSystemLinks(const QByteArray &macRoot, const QByteArray &path)
{
    const QByteArray root = macRoot == "/" ? QByteArray() : macRoot;
    for (const char *name : {"var", "tmp", "etc"}) {
        const QByteArray prefix = root + '/' + name;
        if ((path == prefix || path.startsWith(prefix + '/')) && isSystemLink(root, name))
            return root + "/private" + path.mid(root.size());
    }
    return path;
}

Result<FolderHandle> FolderHandle::open(const QByteArray &path)
{
    if (!path.startsWith('/'))
        return Failure(QStringLiteral("Not an absolute path"));
    FolderHandle top(::open("/", kFolderFlags));
    if (!top.isOpen())
        return Failure(reasonFor(errno));
    return top.openBelow(path.mid(1));
}

Result<FolderHandle> FolderHandle::openBelow(const QByteArray &relative) const
{
    FolderHandle current(::fcntl(m_fd, F_DUPFD_CLOEXEC, 0));
    if (!current.isOpen())
        return Failure(reasonFor(errno));
    for (const QByteArray &component : relative.split('/')) {
        if (component.isEmpty() || component == ".")
            continue;
        if (component == "..")
            return Failure(QStringLiteral("A path with \"..\" is refused"));
        FolderHandle next(::openat(current.fd(), component.constData(), kFolderFlags));
        if (!next.isOpen())
            return Failure(reasonFor(errno));
        current = std::move(next);
    }
    return current;
}

std::optional<uid_t> FolderHandle::owner() const
{
    struct stat info
    {};
    if (::fstat(m_fd, &info) != 0 || !S_ISDIR(info.st_mode))
        return std::nullopt;
    return info.st_uid;
}
