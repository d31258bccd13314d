// SPDX-License-Identifier: MIT
#include "RestoreRun.h"

#include "Platform/MacTools.h"
#include "Platform/ToolRunner.h"
#include "Removal/AuthorizationService.h"
#include "Removal/HistoryStore.h"

#include <QFile>

namespace {
using State = UninstallRecord::State;

RestoreRun::Outcome outcomeOf(RestoreMover::Outcome outcome)
{
    switch (outcome) {
    case RestoreMover::Outcome::restored:
        return RestoreRun::Outcome::restored;
    case RestoreMover::Outcome::occupied:
        return RestoreRun::Outcome::occupied;
    case RestoreMover::Outcome::missing:
        return RestoreRun::Outcome::missing;
    case RestoreMover::Outcome::canceled:
        return RestoreRun::Outcome::canceled;
    case RestoreMover::Outcome::failed:
        break;
    }
    return RestoreRun::Outcome::failed;
}

bool isLaunchJob(FileCategory category)
{
    return category == FileCategory::launchAgents || category == FileCategory::launchDaemons;
}
} // namespace

RestoreRun::RestoreRun(SystemLayout layout, Dependencies dependencies)
    : m_layout(std::move(layout)), m_dependencies(std::move(dependencies))
{
    if (!m_dependencies.user)
        m_dependencies.user = std::make_shared<const UserRestoreMover>(m_layout);
    if (!m_dependencies.admin)
        m_dependencies.admin =
            RestoreMover::adminRights(std::make_shared<const AuthorizationService>(m_layout));
    if (!m_dependencies.tools)
        m_dependencies.tools = std::make_shared<const ToolRunner>();
}

RestoreRun::Report RestoreRun::run(const UninstallRecord &record) const
{
    Report report;
    QList<qsizetype> byUser;
    QList<qsizetype> byAdmin;
    QList<RestoreMover::Move> userMoves;
    QList<RestoreMover::Move> adminMoves;
    for (const UninstallRecord::Item &item : record.items) {
        ItemReport line{item, Outcome::notMoved, {}};
        if (item.state == State::restored)
            line.outcome = Outcome::alreadyRestored;
        else if (item.state == State::planned && item.packageID &&
                 !QFile::exists(QFile::decodeName(item.path)))
            line.outcome = Outcome::forgotten;
        else if (item.state == State::moved) {
            (item.withAdminRights ? byAdmin : byUser).append(report.items.size());
            (item.withAdminRights ? adminMoves : userMoves).append({item.trashPath, item.path});
        }
        report.items.append(line);
    }
    const auto apply = [&](const QList<qsizetype> &indexes, const RestoreMover &mover,
                           const QList<RestoreMover::Move> &moves) {
        if (moves.isEmpty())
            return;
        const QList<RestoreMover::Result> results = mover.moveBack(moves);
        for (qsizetype i = 0; i < indexes.size(); ++i) {
            const RestoreMover::Result result = results.value(i);
            ItemReport &line = report.items[indexes.at(i)];
            line.outcome = outcomeOf(result.outcome);
            line.message = result.message;
        }
    };
    apply(byUser, *m_dependencies.user, userMoves);
    apply(byAdmin, *m_dependencies.admin, adminMoves);

    if (const auto journal = HistoryStore(m_layout).openJournal(record.fileName)) {
        for (qsizetype i = 0; i < report.items.size(); ++i) {
            if (report.items.at(i).outcome == Outcome::restored)
                (void)journal->append(UninstallRecord::restoredLine(i));
        }
    }
    registerApps(report);
    return report;
}

void RestoreRun::registerApps(const Report &report) const
{
    // Only the Mac has a register of apps; elsewhere, and on a fake Mac without its stand-in,
    // there is nothing to run.
    const QString lsregister = m_layout.path(MacTools::lsregister());
    if (!QFile::exists(lsregister))
        return;
    for (const ItemReport &line : report.items) {
        if (line.outcome == Outcome::restored && line.item.category == FileCategory::application)
            (void)m_dependencies.tools->run(
                lsregister, {QStringLiteral("-f"), QFile::decodeName(line.item.path)});
    }
}

qsizetype RestoreRun::Report::count(Outcome outcome) const
{
    return std::count_if(items.cbegin(), items.cend(),
                         [outcome](const ItemReport &line) { return line.outcome == outcome; });
}

bool RestoreRun::Report::isComplete() const
{
    return std::all_of(items.cbegin(), items.cend(), [](const ItemReport &line) {
        return line.outcome != Outcome::occupied && line.outcome != Outcome::missing &&
               line.outcome != Outcome::failed && line.outcome != Outcome::canceled;
    });
}

QString RestoreRun::Report::summary() const
{
    QStringList parts{QStringLiteral("%1 items put back.").arg(count(Outcome::restored))};
    if (const qsizetype n = count(Outcome::occupied))
        parts << QStringLiteral("%1 left in the Trash because something else is at their place "
                                "now.")
                     .arg(n);
    if (const qsizetype n = count(Outcome::missing))
        parts << QStringLiteral("%1 no longer in the Trash.").arg(n);
    if (const qsizetype n = count(Outcome::failed))
        parts << QStringLiteral("%1 could not be put back.").arg(n);
    if (count(Outcome::canceled) > 0)
        parts << QStringLiteral("Administrator permission was not given; those items stay in "
                                "the Trash.");
    if (const qsizetype n = count(Outcome::forgotten))
        parts << QStringLiteral("%1 installer receipts were forgotten and come back only when "
                                "the app is installed again.")
                     .arg(n);
    const bool jobsBack = std::any_of(items.cbegin(), items.cend(), [](const ItemReport &line) {
        return line.outcome == Outcome::restored && isLaunchJob(line.item.category);
    });
    if (jobsBack)
        parts << QStringLiteral("Launch agents and daemons put back are not loaded again; they "
                                "start at the next login or restart.");
    return parts.join(QLatin1Char(' '));
}

QString RestoreRun::caseName(Outcome outcome)
{
    switch (outcome) {
    case Outcome::restored:
        return QStringLiteral("restored");
    case Outcome::occupied:
        return QStringLiteral("occupied");
    case Outcome::missing:
        return QStringLiteral("missingFromTrash");
    case Outcome::failed:
        return QStringLiteral("failed");
    case Outcome::canceled:
        return QStringLiteral("canceled");
    case Outcome::notMoved:
        return QStringLiteral("notMoved");
    case Outcome::forgotten:
        return QStringLiteral("forgotten");
    case Outcome::alreadyRestored:
        return QStringLiteral("alreadyRestored");
    }
    return {};
}

QString RestoreRun::ItemReport::outcomeText() const
{
    switch (outcome) {
    case Outcome::restored:
        return QStringLiteral("Put back");
    case Outcome::alreadyRestored:
        return QStringLiteral("Already put back earlier");
    case Outcome::occupied:
        return QStringLiteral("Stayed in the Trash: something else is at its place now");
    case Outcome::missing:
        return QStringLiteral("No longer in the Trash");
    case Outcome::canceled:
        return QStringLiteral("Stayed in the Trash: administrator permission was not given");
    case Outcome::notMoved:
        return QStringLiteral("Never moved to the Trash");
    case Outcome::forgotten:
        return QStringLiteral("Installer receipt: comes back when the app is installed again");
    case Outcome::failed:
        break;
    }
    return message.isEmpty() ? QStringLiteral("Could not be put back")
                             : QStringLiteral("Could not be put back: ") + message;
}
