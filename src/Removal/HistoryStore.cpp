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

namespace {
const QLatin1String kSuffix(".jsonl");

// Only a regular file of our own is read or extended: never a link or a FIFO planted in its place.
int openFile(const QString &path, int flags)
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

HistoryStore::HistoryStore(const SystemLayout &layout) : m_layout(layout)
{
#if defined(Q_OS_MACOS)
    const bool macLayout = true;
#else
    const bool macLayout = layout.isFakeRoot();
#endif
    m_folder = macLayout
                   ? layout.path(QStringLiteral("~/Library/Application Support/Quenzo/history"))
                   : QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                         QStringLiteral("/Quenzo/history");
}

QStringList HistoryStore::names() const
{
    QStringList list =
        QDir(m_folder).entryList({QStringLiteral("*.jsonl")}, QDir::Files, QDir::Name);
    return list;
}

std::optional<UninstallRecord> HistoryStore::load(const QString &nameOrPath) const
{
    const QString path = nameOrPath.contains(QLatin1Char('/'))
                             ? nameOrPath
                             : m_folder + QLatin1Char('/') + nameOrPath;
    const int fd = openFile(path, O_RDONLY);
    if (fd < 0)
        return std::nullopt;
    QFile file;
    std::optional<UninstallRecord> record;
    if (isRegular(fd) && file.open(fd, QIODevice::ReadOnly, QFile::AutoCloseHandle)) {
        record = UninstallRecord::parse(file.readAll());
        if (record) {
            record->fileName = QFileInfo(path).fileName();
            for (UninstallRecord::Item &item : record->items)
                item.shownPath = m_layout.displayPath(QFile::decodeName(item.path));
        }
    } else {
        ::close(fd);
    }
    return record;
}

std::optional<UninstallRecord> HistoryStore::latest() const
{
    const QStringList list = names();
    for (auto it = list.crbegin(); it != list.crend(); ++it) {
        if (auto record = load(*it))
            return record;
    }
    return std::nullopt;
}

std::optional<HistoryStore::Journal> HistoryStore::createJournal(const QDateTime &time) const
{
    if (!QDir().mkpath(m_folder))
        return std::nullopt;
    const QString name = time.toUTC().toString(QStringLiteral("yyyyMMdd-HHmmss-zzz")) +
                         QLatin1Char('-') + QUuid::createUuid().toString(QUuid::Id128).left(8) +
                         kSuffix;
    const QString path = m_folder + QLatin1Char('/') + name;
    const int fd = openFile(path, O_WRONLY | O_CREAT | O_EXCL);
    if (fd < 0)
        return std::nullopt;
    ::close(fd);
    return Journal(path);
}

std::optional<HistoryStore::Journal> HistoryStore::openJournal(const QString &fileName) const
{
    const QString path = m_folder + QLatin1Char('/') + fileName;
    const int fd = openFile(path, O_WRONLY | O_APPEND);
    if (fd < 0)
        return std::nullopt;
    const bool regular = isRegular(fd);
    ::close(fd);
    return regular ? std::optional(Journal(path)) : std::nullopt;
}

bool HistoryStore::Journal::append(const QByteArray &line) const
{
    const int fd = openFile(m_path, O_WRONLY | O_APPEND);
    if (fd < 0)
        return false;
    const QByteArray bytes = line + '\n';
    const bool written = isRegular(fd) && ::write(fd, bytes.constData(), size_t(bytes.size())) ==
                                              ssize_t(bytes.size());
    ::close(fd);
    return written;
}
