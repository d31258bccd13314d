// SPDX-License-Identifier: MIT
#include "AuthorizationService.h"
#include "Platform/LogCategories.h"

#include "Platform/PrivilegedShell.h"
#include "Platform/SystemServices.h"
#include "Platform/TrustedProgram.h"
#include "Removal/PrivilegedHelper.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QFile>

#include <unistd.h>

namespace {
AuthorizationError errorOf(const PrivilegedShell::Result &result)
{
    if (result.outcome == PrivilegedShell::Outcome::canceled)
        return AuthorizationError::userCanceled();
    return AuthorizationError::deletionFailed(
        result.message.isEmpty() ? QStringLiteral("Unknown error") : result.message);
}
} // namespace

AuthorizationService::AuthorizationService(SystemLayout layout,
                                           std::shared_ptr<const PrivilegedShell> shell,
                                           QString helper)
    : m_layout(std::move(layout)), m_policy(m_layout),
      m_shell(shell ? std::move(shell) : SystemServices::privilegedShell()),
      m_helper(std::move(helper))
{}

AuthorizationService::Report AuthorizationService::removeWithAdminPrivileges(
    const QList<Move> &moves, const QStringList &daemonPlists, const QStringList &packageIDs) const
{
    const QList<HelperRecord> vetted = commands(moves, daemonPlists, packageIDs);
    if (vetted.isEmpty())
        return {};
    // Refused before the prompt: the user is never asked to run what others could change.
    if (const QString refusal = TrustedProgram::refusal(m_helper); !refusal.isEmpty())
        return Report{AuthorizationError::deletionFailed(refusal), {}, {}};
    // The batch may pass through a file the user's programs can rewrite while the prompt is
    // up; its digest goes with the arguments the user approves, and the helper checks it.
    const QByteArray batch = HelperBatch::encode(vetted);
    const QStringList arguments{
        QStringLiteral("--root"),         m_layout.root(),
        QStringLiteral("--home"),         m_layout.home(),
        QStringLiteral("--user"),         QString::number(::getuid()),
        QStringLiteral("--batch-sha256"), QString::fromLatin1(batchDigest(batch))};
    const PrivilegedShell::Result result = m_shell->run(m_helper, arguments, batch);
    if (result.outcome != PrivilegedShell::Outcome::completed)
        return Report{errorOf(result), {}, {}};
    // One result per command, in order, each about its own command's item.
    const auto records = HelperBatch::parseResults(result.output);
    if (!records || records->size() != vetted.size())
        return Report{AuthorizationError::deletionFailed(
                          QStringLiteral("The helper's answer was unreadable")),
                      {},
                      {}};
    Report report;
    for (qsizetype i = 0; i < vetted.size(); ++i) {
        const HelperRecord &record = records->at(i);
        if (record.fields.at(0) != vetted.at(i).fields.at(0))
            continue;
        (vetted.at(i).word == "move" ? report.moves : report.others)
            .insert(record.fields.at(0), record);
    }
    return report;
}

QList<HelperRecord> AuthorizationService::commands(const QList<Move> &moves,
                                                   const QStringList &daemonPlists,
                                                   const QStringList &packageIDs) const
{
    QList<HelperRecord> result;
    for (const QString &plist : daemonPlists) {
        if (m_policy.isAllowed(plist))
            result.append(HelperRecord{"bootout", {QFile::encodeName(plist)}});
        else
            qCDebug(lcRemoval) << "refused by the path policy:" << plist;
    }
    for (const QString &id : packageIDs) {
        if (AdminPathPolicy::isValidPackageID(id))
            result.append(HelperRecord{"forget", {id.toUtf8()}});
        else
            qCDebug(lcRemoval) << "refused package identifier:" << id;
    }
    const QString trash = m_layout.trashDirectory();
    for (const Move &move : moves) {
        if (PrivilegedHelper::isAllowedMove(m_policy, move.source, move.destination, trash))
            result.append(HelperRecord{
                "move", {QFile::encodeName(move.source), QFile::encodeName(move.destination)}});
        else
            qCDebug(lcRemoval) << "refused move:" << move.source << "to" << move.destination;
    }
    return result;
}

QByteArray AuthorizationService::batchDigest(const QByteArray &batch)
{
    return QCryptographicHash::hash(batch, QCryptographicHash::Sha256).toHex();
}

QString AuthorizationService::defaultHelper()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/quenzo-privileged-helper");
}
