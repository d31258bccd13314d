// SPDX-License-Identifier: MIT
#include "HistoryStore.h"

#include "Platform/SystemLayout.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QUuid>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace HistoryStore {

namespace {
const QLatin1String kSuffix(".jsonl");

// Only a regular file of our own is read or extended: never a link or a FIFO planted in its place.
int openJournal(const QString &path, int flags)
{
    return ::open(QFile::encodeName(path).constData(), flags | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC,
                  0600);
}

bool isRegular(int fd)
{
    struct stat info
    {};
    return ::fstat(fd, &info) == 0 && S_ISREG(info.st_mode);
}
} // namespace

QString folder()
{
#if defined(Q_OS_MACOS)
    const bool macLayout = true;
#else
    const bool macLayout = SystemLayout::isFakeRoot();
#endif
    if (macLayout)
        return SystemLayout::path(QStringLiteral("~/Library/Application Support/Quenzo/history"));
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/Quenzo/history");
}

QStringList names()
{
    QStringList list =
        QDir(folder()).entryList({QStringLiteral("*.jsonl")}, QDir::Files, QDir::Name);
    return list;
}

std::optional<UninstallRecord> load(const QString &nameOrPath)
{
    const QString path = nameOrPath.contains(QLatin1Char('/'))
                             ? nameOrPath
                             : folder() + QLatin1Char('/') + nameOrPath;
    const int fd = openJournal(path, O_RDONLY);
    if (fd < 0)
        return std::nullopt;
    QFile file;
    std::optional<UninstallRecord> record;
    if (isRegular(fd) && file.open(fd, QIODevice::ReadOnly, QFile::AutoCloseHandle)) {
        record = UninstallRecord::parse(file.readAll());
        if (record)
            record->fileName = QFileInfo(path).fileName();
    } else {
        ::close(fd);
    }
    return record;
}

std::optional<UninstallRecord> latest()
{
    const QStringList list = names();
    for (auto it = list.crbegin(); it != list.crend(); ++it) {
        if (auto record = load(*it))
            return record;
    }
    return std::nullopt;
}

std::optional<Journal> Journal::create(const QDateTime &time)
{
    if (!QDir().mkpath(folder()))
        return std::nullopt;
    const QString name = time.toUTC().toString(QStringLiteral("yyyyMMdd-HHmmss-zzz")) +
                         QLatin1Char('-') + QUuid::createUuid().toString(QUuid::Id128).left(8) +
                         kSuffix;
    const QString path = folder() + QLatin1Char('/') + name;
    const int fd = openJournal(path, O_WRONLY | O_CREAT | O_EXCL);
    if (fd < 0)
        return std::nullopt;
    ::close(fd);
    return Journal(path);
}

std::optional<Journal> Journal::open(const QString &fileName)
{
    const QString path = folder() + QLatin1Char('/') + fileName;
    const int fd = openJournal(path, O_WRONLY | O_APPEND);
    if (fd < 0)
        return std::nullopt;
    const bool regular = isRegular(fd);
    ::close(fd);
    return regular ? std::optional(Journal(path)) : std::nullopt;
}

bool Journal::append(const QByteArray &line) const
{
    const int fd = openJournal(m_path, O_WRONLY | O_APPEND);
    if (fd < 0)
        return false;
    const QByteArray bytes = line + '\n';
    const bool written = isRegular(fd) && ::write(fd, bytes.constData(), size_t(bytes.size())) ==
                                              ssize_t(bytes.size());
    ::close(fd);
    return written;
}

} // namespace HistoryStore
