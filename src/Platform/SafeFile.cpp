// SPDX-License-Identifier: MIT
#include "SafeFile.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

int SafeFile::openRegular(const QByteArray &path, Links links)
{
    // O_NONBLOCK: opening a FIFO for reading would otherwise wait for a writer forever.
    int flags = O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY;
    if (links == Links::refuse)
        flags |= O_NOFOLLOW;
    const int fd = ::open(path.constData(), flags);
    if (fd < 0)
        return -1;
    struct stat info
    {};
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
        ::close(fd);
        return -1;
    }
    ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK);
    return fd;
}

std::optional<QByteArray> SafeFile::read(const QString &path, qint64 maximumSize, Links links)
{
    return read(QFile::encodeName(path), maximumSize, links);
}

std::optional<QByteArray> SafeFile::read(const QByteArray &path, qint64 maximumSize, Links links)
{
    const int fd = openRegular(path, links);
    if (fd < 0)
        return std::nullopt;
    QByteArray bytes;
    char buffer[65536];
    for (;;) {
        const ssize_t count = ::read(fd, buffer, sizeof buffer);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0 || bytes.size() + count > maximumSize) {
            ::close(fd);
            if (count == 0)
                return bytes;
            return std::nullopt;
        }
        bytes.append(buffer, count);
    }
}
