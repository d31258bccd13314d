// SPDX-License-Identifier: MIT
#include "SizeMeasurer.h"

#include <QFile>

#include <fts.h>
#include <sys/stat.h>

namespace {
// fts lists each folder once and hands over the lstat of every entry, with no QString or
// QFileInfo per entry. FTS_PHYSICAL reports links as themselves and never enters them;
// FTS_NOCHDIR leaves the working directory alone, as other threads share it. Entries fts
// cannot read (FTS_DNR, FTS_NS, FTS_ERR) add nothing.
qint64 sumBelow(const QByteArray &folder)
{
    char *roots[] = {const_cast<char *>(folder.constData()), nullptr};
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
} // namespace

qint64 SizeMeasurer::itemSize(const QString &path)
{
    const QByteArray encoded = QFile::encodeName(path);
    struct stat info
    {};
    if (encoded.isEmpty() || ::lstat(encoded.constData(), &info) != 0)
        return 0;
    if (S_ISDIR(info.st_mode)) {
        if (const qint64 below = sumBelow(encoded); below > 0)
            return below;
    }
    return qint64(info.st_size);
}
