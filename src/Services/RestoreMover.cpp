// SPDX-License-Identifier: MIT
#include "RestoreMover.h"

#include "Platform/PrivilegedShell.h"
#include "Platform/SystemLayout.h"
#include "Services/AdminPathPolicy.h"
#include "Services/AuthorizationService.h"

#include <QFile>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>

namespace {
using Outcome = RestoreMover::Outcome;
using Result = RestoreMover::Result;

bool exists(const QByteArray &path)
{
    struct stat info
    {};
    return ::lstat(path.constData(), &info) == 0;
}

QByteArray parentOf(const QByteArray &path)
{
    const qsizetype slash = path.lastIndexOf('/');
    return slash <= 0 ? QByteArray("/") : path.left(slash);
}

// Checks that hold for both rights: the item is still in the Trash, nothing took its place,
// and its folder is reached without a link.
std::optional<Result> refusal(const RestoreMover::Move &move)
{
    if (!exists(move.trashPath))
        return Result{Outcome::missing, {}};
    if (exists(move.originalPath))
        return Result{Outcome::occupied, {}};
    if (const auto link = RestoreMover::linkOnTheWay(move.originalPath))
        return Result{Outcome::failed, *link};
    struct stat parent
    {};
    if (::lstat(parentOf(move.originalPath).constData(), &parent) != 0 || !S_ISDIR(parent.st_mode))
        return Result{Outcome::failed, QStringLiteral("Its folder no longer exists")};
    return std::nullopt;
}

// The check for an occupied original path and the move in one step.
int renameWithoutReplacing(const QByteArray &from, const QByteArray &to)
{
#if defined(RENAME_NOREPLACE)
    return ::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0
               ? 0
               : errno;
#elif defined(RENAME_EXCL)
    return ::renameatx_np(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_EXCL) == 0
               ? 0
               : errno;
#else
    return EINVAL;
#endif
}

class RenamingRestoreMover : public RestoreMover
{
public:
    QList<Result> moveBack(const QList<Move> &moves) const override
    {
        QList<Result> results;
        for (const Move &move : moves) {
            const std::optional<Result> refused = refusal(move);
            results.append(refused ? *refused : rename(move));
        }
        return results;
    }

private:
    static Result rename(const Move &move)
    {
        int failure = renameWithoutReplacing(move.trashPath, move.originalPath);
        if (failure == EINVAL && !exists(move.originalPath)) // no such flag on this file system
            failure = ::rename(move.trashPath.constData(), move.originalPath.constData()) == 0
                          ? 0
                          : errno;
        if (failure == 0)
            return {Outcome::restored, {}};
        if (failure == EEXIST)
            return {Outcome::occupied, {}};
        if (failure == ENOENT && !exists(move.trashPath))
            return {Outcome::missing, {}};
        return {Outcome::failed, QString::fromLocal8Bit(std::strerror(failure))};
    }
};

// Only what root itself owned goes back with root's rights: an item the user's programs could
// have planted in the Trash, beside a forged record, never reaches a system folder.
bool isOwnedBySystem(const QByteArray &path)
{
    struct stat item
    {};
    struct stat root
    {};
    if (::lstat(path.constData(), &item) != 0)
        return false;
    const bool rootKnown = ::stat(QFile::encodeName(SystemLayout::root()).constData(), &root) == 0;
    return item.st_uid == 0 || (rootKnown && item.st_uid == root.st_uid);
}

class PrivilegedRestoreMover : public RestoreMover
{
public:
    explicit PrivilegedRestoreMover(std::shared_ptr<const PrivilegedShell> shell)
        : m_shell(shell ? std::move(shell) : PrivilegedShell::system())
    {}

    QList<Result> moveBack(const QList<Move> &moves) const override
    {
        QList<Result> results;
        QStringList commands;
        const QString mv =
            AuthorizationService::shellQuoted(SystemLayout::path(QStringLiteral("/bin/mv")));
        for (const Move &move : moves) {
            std::optional<Result> refused = refusal(move);
            const QString from = QFile::decodeName(move.trashPath);
            const QString to = QFile::decodeName(move.originalPath);
            const bool sameBytes = QFile::encodeName(from) == move.trashPath &&
                                   QFile::encodeName(to) == move.originalPath;
            if (!refused && (!sameBytes || !AuthorizationService::isTrashDestination(from) ||
                             !AdminPathPolicy::isAllowed(to)))
                refused = Result{Outcome::failed, QStringLiteral("Not a place Quenzo restores to")};
            if (!refused && !isOwnedBySystem(move.trashPath))
                refused = Result{Outcome::failed,
                                 QStringLiteral("Owned by you now, so it is not restored with "
                                                "administrator rights; put it back by hand")};
            results.append(refused.value_or(Result{Outcome::restored, {}}));
            if (!refused)
                commands.append(mv + QStringLiteral(" -n -- ") +
                                AuthorizationService::shellQuoted(from) + QLatin1Char(' ') +
                                AuthorizationService::shellQuoted(to));
        }
        if (commands.isEmpty())
            return results;
        const QString line = AuthorizationService::commandLine(commands);
        const PrivilegedShell::Result ran =
            m_shell->run(line, AuthorizationService::appleScriptSource(line));
        for (qsizetype i = 0; i < moves.size(); ++i) {
            if (results.at(i).outcome != Outcome::restored)
                continue;
            // Only the disk tells what happened: the line always exits 0.
            const bool back = !exists(moves.at(i).trashPath) && exists(moves.at(i).originalPath);
            if (back)
                continue;
            if (ran.outcome == PrivilegedShell::Outcome::canceled)
                results[i] = {Outcome::canceled, {}};
            else
                results[i] = {Outcome::failed, ran.message.isEmpty()
                                                   ? QStringLiteral("Couldn't be moved back")
                                                   : ran.message};
        }
        return results;
    }

private:
    std::shared_ptr<const PrivilegedShell> m_shell;
};
} // namespace

std::shared_ptr<const RestoreMover> RestoreMover::userRights()
{
    return std::make_shared<const RenamingRestoreMover>();
}

std::shared_ptr<const RestoreMover>
RestoreMover::adminRights(std::shared_ptr<const PrivilegedShell> shell)
{
    return std::make_shared<const PrivilegedRestoreMover>(std::move(shell));
}

std::optional<QString> RestoreMover::linkOnTheWay(const QByteArray &originalPath)
{
    static const QList<QByteArray> kSystemLinks{"/var", "/tmp", "/etc"};
    QByteArray path = originalPath;
    if (!SystemLayout::isFakeRoot()) {
        for (const QByteArray &link : kSystemLinks) {
            if (path.startsWith(link + '/'))
                path = "/private" + path;
        }
    }
    const QByteArray parent = parentOf(path);
    for (qsizetype from = 1;;) {
        const qsizetype slash = parent.indexOf('/', from);
        const QByteArray folder = slash < 0 ? parent : parent.left(slash);
        struct stat info
        {};
        if (::lstat(folder.constData(), &info) == 0 && S_ISLNK(info.st_mode))
            return QStringLiteral("A link is on the way: ") + QFile::decodeName(folder);
        if (slash < 0)
            break;
        from = slash + 1;
    }
    return std::nullopt;
}
