// SPDX-License-Identifier: MIT
#include "SizeMeasurer.h"

#include <QFile>

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <fts.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {
// The sum through fts, which holds no folder open while it walks below it: the fallback for
// trees deeper than the descriptors we may hold. FTS_PHYSICAL reports links as themselves and
// never enters them; FTS_NOCHDIR leaves the working directory alone, as other threads share it.
qint64 sumWithFts(const std::string &folder)
{
    char *roots[] = {const_cast<char *>(folder.c_str()), nullptr};
    FTS *tree = ::fts_open(roots, FTS_PHYSICAL | FTS_NOCHDIR, nullptr);
    if (!tree)
        return 0;
    qint64 total = 0;
    while (const FTSENT *entry = ::fts_read(tree)) {
        if (entry->fts_info == FTS_F || entry->fts_info == FTS_SL || entry->fts_info == FTS_SLNONE)
            total += qint64(entry->fts_statp->st_size);
    }
    ::fts_close(tree);
    return total;
}

qint64 sumBelow(int folderFd, const std::string &folderPath);

// A folder opened relative to its parent, so the kernel resolves one name instead of the whole
// path. O_NOFOLLOW: a folder swapped for a link meanwhile is not entered.
qint64 sumOfFolder(int parentFd, const char *name, const std::string &path)
{
    const int fd = ::openat(parentFd, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (fd >= 0)
        return sumBelow(fd, path);
    if (errno == EMFILE || errno == ENFILE)
        return sumWithFts(path);
    return 0; // unreadable: adds nothing
}

// Takes ownership of folderFd. Entries are told apart by their directory type where the file
// system gives one, so only files and links (and entries of unknown type) are stat'ed.
qint64 sumBelow(int folderFd, const std::string &folderPath)
{
    DIR *folder = ::fdopendir(folderFd);
    if (!folder) {
        ::close(folderFd);
        return 0;
    }
    qint64 total = 0;
    while (const dirent *entry = ::readdir(folder)) {
        const char *name = entry->d_name;
        if (name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0')))
            continue;
        bool isFolder = entry->d_type == DT_DIR;
        if (!isFolder) {
            struct stat info
            {};
            if (::fstatat(folderFd, name, &info, AT_SYMLINK_NOFOLLOW) != 0)
                continue;
            if (S_ISREG(info.st_mode) || S_ISLNK(info.st_mode))
                total += qint64(info.st_size);
            isFolder = S_ISDIR(info.st_mode);
        }
        if (isFolder)
            total += sumOfFolder(folderFd, name, folderPath + '/' + name);
    }
    ::closedir(folder);
    return total;
}
} // namespace

qint64 SizeMeasurer::itemSize(const QString &path)
{
    const QByteArray encoded = QFile::encodeName(path);
    struct stat info
    {};
    if (encoded.isEmpty() || ::lstat(encoded.constData(), &info) != 0)
        return 0;
    if (S_ISDIR(info.st_mode)) {
        const std::string folder(encoded.constData(), size_t(encoded.size()));
        if (const qint64 below = sumOfFolder(AT_FDCWD, folder.c_str(), folder); below > 0)
            return below;
    }
    return qint64(info.st_size);
}
