// SPDX-License-Identifier: MIT
#include "AuthorizationService.h"
#include "Platform/LogCategories.h"

#include "Platform/PrivilegedShell.h"
#include "Platform/SystemLayout.h"
#include "Services/AdminPathPolicy.h"

#include <QDir>
#include <QRegularExpression>

namespace {
// A tool of the fake Mac may lie under a folder whose name the shell would split; the real
// tool paths hold nothing of the kind and stay bare.
QString toolPath(const QString &macPath)
{
    static const QRegularExpression plain(QStringLiteral("^[A-Za-z0-9/._+-]+$"));
    const QString path = SystemLayout::path(macPath);
    return plain.match(path).hasMatch() ? path : AuthorizationService::shellQuoted(path);
}

AuthorizationError errorOf(const PrivilegedShell::Result &result)
{
    if (result.outcome == PrivilegedShell::Outcome::canceled)
        return AuthorizationError::userCanceled();
    return AuthorizationError::deletionFailed(
        result.message.isEmpty() ? QStringLiteral("Unknown error") : result.message);
}
} // namespace

AuthorizationService::AuthorizationService() : AuthorizationService(PrivilegedShell::system()) {}

AuthorizationService::AuthorizationService(std::shared_ptr<const PrivilegedShell> shell)
    : m_shell(std::move(shell))
{}

std::optional<AuthorizationError> AuthorizationService::removeWithAdminPrivileges(
    const QList<Move> &moves, const QStringList &daemonPlists, const QStringList &packageIDs) const
{
    const QStringList vetted = commands(moves, daemonPlists, packageIDs);
    if (vetted.isEmpty())
        return std::nullopt;
    const QString line = commandLine(vetted);
    const PrivilegedShell::Result result = m_shell->run(line, appleScriptSource(line));
    if (result.outcome == PrivilegedShell::Outcome::completed)
        return std::nullopt;
    return errorOf(result);
}

QStringList AuthorizationService::commands(const QList<Move> &moves,
                                           const QStringList &daemonPlists,
                                           const QStringList &packageIDs)
{
    QStringList result;
    const QString launchctl = toolPath(QStringLiteral("/bin/launchctl"));
    for (const QString &plist : daemonPlists) {
        if (AdminPathPolicy::isAllowed(plist))
            result.append(launchctl + QStringLiteral(" bootout system ") + shellQuoted(plist) +
                          QStringLiteral(" >/dev/null 2>&1"));
        else
            qCDebug(lcRemoval) << "refused by the path policy:" << plist;
    }
    const QString pkgutil = toolPath(QStringLiteral("/usr/sbin/pkgutil"));
    for (const QString &id : packageIDs) {
        if (AdminPathPolicy::isValidPackageID(id))
            result.append(pkgutil + QStringLiteral(" --forget ") + shellQuoted(id) +
                          QStringLiteral(" >/dev/null 2>&1"));
        else
            qCDebug(lcRemoval) << "refused package identifier:" << id;
    }
    const QString mv = toolPath(QStringLiteral("/bin/mv"));
    for (const Move &move : moves) {
        if (AdminPathPolicy::isAllowed(move.source) && isTrashDestination(move.destination))
            result.append(mv + QStringLiteral(" -n -- ") + shellQuoted(move.source) +
                          QLatin1Char(' ') + shellQuoted(move.destination));
        else
            qCDebug(lcRemoval) << "refused move:" << move.source << "to" << move.destination;
    }
    return result;
}

QString AuthorizationService::commandLine(const QStringList &commands)
{
    return commands.join(QStringLiteral("; ")) + QStringLiteral("; exit 0");
}

QString AuthorizationService::appleScriptSource(const QString &commandLine)
{
    // Backslashes first, so the ones added before quotes are not doubled again.
    QString escaped = commandLine;
    escaped.replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
    escaped.replace(QLatin1Char('"'), QStringLiteral("\\\""));
    return QStringLiteral("do shell script \"") + escaped +
           QStringLiteral("\" with administrator privileges");
}

QString AuthorizationService::shellQuoted(const QString &text)
{
    QString quoted = text;
    quoted.replace(QLatin1Char('\''), QStringLiteral("'\\''"));
    return QLatin1Char('\'') + quoted + QLatin1Char('\'');
}

bool AuthorizationService::isTrashDestination(const QString &destination)
{
    if (!destination.startsWith(QLatin1Char('/')) ||
        AdminPathPolicy::hasForbiddenCharacter(destination))
        return false;
    if (QDir::cleanPath(destination) != destination)
        return false;
    const qsizetype slash = destination.lastIndexOf(QLatin1Char('/'));
    const QString parent = destination.left(slash);
    return parent == AdminPathPolicy::trashDirectory() && slash + 1 < destination.size();
}
