// SPDX-License-Identifier: MIT
#include "PrivilegedHelper.h"

#include "Platform/SystemLayout.h"
#include "Platform/ToolRunner.h"
#include "Platform/TrustedProgram.h"
#include "Removal/AdminPathPolicy.h"

#include <QFile>

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

PrivilegedHelper::PrivilegedHelper(Context context, const ToolRunner &tools)
    : m_context(std::move(context)), m_tools(tools)
{
    m_mover = LinkProofMove::open(m_context.root, m_context.home, m_context.user, &m_moverError);
}

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

bool PrivilegedHelper::isAllowedMove(const QString &source, const QString &destination,
                                     const QString &trash)
{
    return (AdminPathPolicy::isAllowed(source) && isDirectlyIn(destination, trash)) ||
           (isDirectlyIn(source, trash) && AdminPathPolicy::isAllowed(destination));
}

HelperRecord PrivilegedHelper::bootOut(const QByteArray &plist) const
{
    const auto path = faithful(plist);
    if (!path || !AdminPathPolicy::isAllowed(*path) || !m_mover || !m_mover->isPlainFile(plist))
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
    const QString tool = SystemLayout::path(QLatin1String(macPath));
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
        return failed(source, m_moverError);
    // The Trash as the caller names it (SystemLayout's home), before any /private rewriting.
    const QByteArray trash = m_context.home + "/.Trash";
    if (!isAllowedMove(*from, *to, QFile::decodeName(trash)))
        return failed(source, QStringLiteral("Not an item Quenzo may move"));
    const bool intoTrash = destination.startsWith(trash + '/');
    // The Trash and the record naming what to put back are the user's: root only puts back what
    // the user's own programs could not have made, never a file planted there to be "restored"
    // into a system folder.
    if (!intoTrash && !m_mover->isOwnedBySystem(source))
        return failed(source, QStringLiteral("Owned by you now, so it is not put back with "
                                             "administrator rights"));
    const LinkProofMove::Outcome outcome =
        intoTrash ? m_mover->moveToTrash(source) : m_mover->move(source, destination);
    if (outcome.moved)
        return HelperRecord{"moved", {source, outcome.destination}};
    // Already gone: nothing of it is left to remove.
    if (outcome.missing)
        return HelperRecord{"done", {source}};
    return failed(source, outcome.error);
}
