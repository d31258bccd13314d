// SPDX-License-Identifier: MIT
#include "PrivilegedHelper.h"

#include "Platform/ToolRunner.h"
#include "Platform/TrustedProgram.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {
HelperRecord failed(const QByteArray &item, const QString &reason)
{
    return HelperRecord{"failed", {item, reason.toUtf8()}};
}

// A name that does not survive decoding unchanged (not UTF-8) could be checked as one name and
// moved as another; it is refused instead.
std::optional<QString> faithful(const QByteArray &bytes)
{
    const QString text = QFile::decodeName(bytes);
    if (QFile::encodeName(text) != bytes || bytes.contains('\0'))
        return std::nullopt;
    return text;
}

bool isDirectlyIn(const QString &path, const QString &folder)
{
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    return slash > 0 && path.left(slash) == folder && slash + 1 < path.size() &&
           !AdminPathPolicy::hasForbiddenCharacter(path) &&
           path.mid(slash + 1) != QLatin1String(".") && path.mid(slash + 1) != QLatin1String("..");
}
} // namespace

PrivilegedHelper::PrivilegedHelper(SystemLayout layout, uid_t user, const ToolRunner &tools)
    : m_layout(std::move(layout)), m_policy(m_layout), m_tools(tools),
      m_mover(LinkProofMove::open(QFile::encodeName(m_layout.root()),
                                  QFile::encodeName(m_layout.home()), user)),
      m_journal(m_mover
                    ? RootMoveJournal::open(m_mover->root(), m_mover->root().owner().value_or(0))
                    : Result<RootMoveJournal>(Failure(m_mover.error())))
{}

QList<HelperRecord> PrivilegedHelper::run(const QList<HelperRecord> &commands) const
{
    QList<HelperRecord> results;
    for (const HelperRecord &command : commands) {
        if (command.word == "bootout")
            results.append(bootOut(command.fields.at(0)));
        else if (command.word == "forget")
            results.append(forget(command.fields.at(0)));
        else if (command.word == "move")
            results.append(move(command.fields.at(0), command.fields.at(1)));
    }
    return results;
}

bool PrivilegedHelper::isAllowedMove(const AdminPathPolicy &policy, const QString &source,
                                     const QString &destination, const QString &trash)
{
    constexpr auto kScope = AdminPathPolicy::Scope::systemOnly;
    return (policy.isAllowed(source, kScope) && isDirectlyIn(destination, trash)) ||
           (isDirectlyIn(source, trash) && policy.isAllowed(destination, kScope));
}

HelperRecord PrivilegedHelper::bootOut(const QByteArray &plist) const
{
    const auto path = faithful(plist);
    // As root, launchctl takes the label from the file: one the user could write or link would
    // let their programs stop any system daemon.
    const QString daemons = m_layout.path(QStringLiteral("/Library/LaunchDaemons"));
    if (!path || !isDirectlyIn(*path, daemons) || !m_mover || !m_mover->isSystemOnlyFile(plist))
        return failed(plist, QStringLiteral("Not a launch daemon Quenzo may stop"));
    return runTool("/bin/launchctl", {QStringLiteral("bootout"), QStringLiteral("system"), *path},
                   plist);
}

HelperRecord PrivilegedHelper::forget(const QByteArray &packageID) const
{
    const auto id = faithful(packageID);
    if (!id || !AdminPathPolicy::isValidPackageID(*id))
        return failed(packageID, QStringLiteral("Not a package Quenzo may forget"));
    return runTool("/usr/sbin/pkgutil", {QStringLiteral("--forget"), *id}, packageID);
}

HelperRecord PrivilegedHelper::runTool(const char *macPath, const QStringList &arguments,
                                       const QByteArray &item) const
{
    const QString tool = m_layout.path(QLatin1String(macPath));
    if (const QString refusal = TrustedProgram::refusal(tool); !refusal.isEmpty())
        return failed(item, refusal);
    // The tool's own answer (a daemon that was not loaded) changes nothing for the caller, who
    // judges by the disk; only a tool that could not run at all is reported.
    const ToolResult result = m_tools.run(tool, arguments);
    if (result.exitStatus == -1 && !result.errorText.isEmpty())
        return failed(item, result.errorText);
    return HelperRecord{"done", {item}};
}

HelperRecord PrivilegedHelper::move(const QByteArray &source, const QByteArray &destination) const
{
    const auto from = faithful(source);
    const auto to = faithful(destination);
    if (!from || !to)
        return failed(source, QStringLiteral("The name is not valid UTF-8"));
    if (!m_mover)
        return failed(source, m_mover.error());
    // The Trash as the caller names it (the layout's home), before any /private rewriting.
    const QByteArray trash = QFile::encodeName(m_layout.home()) + "/.Trash";
    if (!isAllowedMove(m_policy, *from, *to, QFile::decodeName(trash)))
        return failed(source, QStringLiteral("Not an item Quenzo may move"));
    const bool intoTrash = destination.startsWith(trash + '/');
    return intoTrash ? moveToTrash(source) : restore(source, destination);
}

HelperRecord PrivilegedHelper::moveToTrash(const QByteArray &source) const
{
    // An item that could not be recorded could never be put back as root: it is not moved.
    if (!m_journal)
        return failed(source, m_journal.error());
    const LinkProofMove::Outcome outcome = m_mover->moveToTrash(source);
    if (outcome.moved) {
        // Unrecorded, it is still safely in the Trash; only a restore as root would refuse it.
        (void)m_journal->append({outcome.device, outcome.inode}, source);
        return HelperRecord{"moved", {source, outcome.destination}};
    }
    // Already gone: nothing of it is left to remove.
    if (outcome.missing)
        return HelperRecord{"done", {source}};
    return failed(source, outcome.error);
}

// The Trash and the record naming what to put back are the user's, so their programs can plant,
// hard-link or swap anything there at any moment. Root puts back only an entry it moved into
// the Trash itself, to exactly where it came from: the entry is first taken out of the user's
// reach into the staging folder, and only there, where nothing can swap it, is it compared with
// the journal.
HelperRecord PrivilegedHelper::restore(const QByteArray &source,
                                       const QByteArray &destination) const
{
    if (!m_journal)
        return failed(source, m_journal.error());
    static int serial = 0;
    const QByteArray held =
        "restore-" + QByteArray::number(qint64(::getpid())) + '-' + QByteArray::number(++serial);
    const LinkProofMove::Outcome taken = m_mover->moveInto(source, m_journal->staging(), held);
    if (!taken.moved)
        return taken.missing ? HelperRecord{"done", {source}} : failed(source, taken.error);
    struct stat info
    {};
    const bool isJournaled =
        ::fstatat(m_journal->staging().fd(), held.constData(), &info, AT_SYMLINK_NOFOLLOW) == 0 &&
        (info.st_uid == 0 || info.st_uid == m_journal->owner()) &&
        (S_ISDIR(info.st_mode) || info.st_nlink == 1) &&
        m_journal->contains({info.st_dev, info.st_ino}, destination);
    QString reason = QStringLiteral("Not moved to the Trash by Quenzo as administrator, so it is "
                                    "not put back with administrator rights");
    if (isJournaled) {
        const LinkProofMove::Outcome back =
            m_mover->moveOut(m_journal->staging(), held, destination);
        if (back.moved) {
            m_journal->remove({info.st_dev, info.st_ino}, destination);
            return HelperRecord{"moved", {source, destination}};
        }
        reason = back.error;
    }
    const LinkProofMove::Outcome returned = m_mover->moveOutToTrash(
        m_journal->staging(), held, source.mid(source.lastIndexOf('/') + 1));
    if (!returned.moved)
        reason += QStringLiteral(" (it is kept in Quenzo's administrator folder)");
    return failed(source, reason);
}
