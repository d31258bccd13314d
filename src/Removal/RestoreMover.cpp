// SPDX-License-Identifier: MIT
#include "RestoreMover.h"

#include "Platform/LinkProofMove.h"
#include "Platform/SystemLayout.h"
#include "Removal/AuthorizationService.h"

#include <QFile>

#include <sys/stat.h>
#include <unistd.h>

namespace {
using Outcome = RestoreMover::Outcome;
using Result = RestoreMover::Result;

bool exists(const QByteArray &path)
{
    struct stat info
    {};
    return ::lstat(path.constData(), &info) == 0;
}

// Read before the move for a clear report; the move itself never replaces and never follows a
// link, so a change after this check only makes the move fail.
std::optional<Result> refusal(const RestoreMover::Move &move)
{
    if (!exists(move.trashPath))
        return Result{Outcome::missing, {}};
    if (exists(move.originalPath))
        return Result{Outcome::occupied, {}};
    return std::nullopt;
}

} // namespace

QList<RestoreMover::Result> UserRestoreMover::moveBack(const QList<Move> &moves) const
{
    QList<Result> results;
    const auto mover = LinkProofMove::open(QFile::encodeName(m_layout.root()),
                                           QFile::encodeName(m_layout.home()), ::getuid());
    for (const Move &move : moves) {
        if (const auto refused = refusal(move)) {
            results.append(*refused);
            continue;
        }
        if (!mover) {
            results.append({Outcome::failed, mover.error()});
            continue;
        }
        const LinkProofMove::Outcome outcome = mover->move(move.trashPath, move.originalPath);
        if (outcome.moved)
            results.append({Outcome::restored, {}});
        else if (outcome.missing)
            results.append({Outcome::missing, {}});
        else if (exists(move.originalPath))
            results.append({Outcome::occupied, {}});
        else
            results.append({Outcome::failed, outcome.error});
    }
    return results;
}

namespace {

// Every move in one run of the privileged helper, which checks each again as root.
class AdminRestoreMover : public RestoreMover
{
public:
    explicit AdminRestoreMover(std::shared_ptr<const AuthorizationService> authorization)
        : m_authorization(std::move(authorization))
    {}

    QList<Result> moveBack(const QList<Move> &moves) const override
    {
        QList<Result> results;
        QList<AuthorizationService::Move> asked;
        for (const Move &move : moves) {
            const std::optional<Result> refused = refusal(move);
            results.append(refused.value_or(Result{Outcome::restored, {}}));
            if (!refused)
                asked.append(
                    {QFile::decodeName(move.trashPath), QFile::decodeName(move.originalPath)});
        }
        if (asked.isEmpty())
            return results;
        const AuthorizationService::Report report =
            m_authorization->removeWithAdminPrivileges(asked, {}, {});
        for (qsizetype i = 0; i < moves.size(); ++i) {
            if (results.at(i).outcome != Outcome::restored)
                continue;
            const HelperRecord record = report.moves.value(moves.at(i).trashPath);
            if (report.error)
                results[i] = {report.error->kind() == AuthorizationError::Kind::userCanceled
                                  ? Outcome::canceled
                                  : Outcome::failed,
                              report.error->message()};
            else if (record.word != "moved")
                results[i] = {exists(moves.at(i).originalPath) ? Outcome::occupied
                                                               : Outcome::failed,
                              record.fields.size() > 1 ? QString::fromUtf8(record.fields.at(1))
                                                       : QStringLiteral("Couldn't be moved back")};
        }
        return results;
    }

private:
    std::shared_ptr<const AuthorizationService> m_authorization;
};
} // namespace

std::shared_ptr<const RestoreMover>
RestoreMover::adminRights(std::shared_ptr<const AuthorizationService> authorization)
{
    return std::make_shared<const AdminRestoreMover>(std::move(authorization));
}
