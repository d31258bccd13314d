// SPDX-License-Identifier: MIT
#include "UninstallRun.h"

#include "Platform/SystemLayout.h"
#include "Platform/TrashMover.h"
#include "Platform/TrashNaming.h"
#include "Services/AdminPathPolicy.h"
#include "Services/AuthorizationService.h"
#include "Services/MainThread.h"
#include "Services/PreferenceDomains.h"
#include "Services/ProcessService.h"
#include "Services/UninstallRecorder.h"

#include <limits>

namespace {
const QString kCouldNotMove = QStringLiteral("Couldn't be moved to the Trash");

bool isPartOfOperatingSystem(const QString &path)
{
    const auto macPath = SystemLayout::macPath(path);
    return macPath && macPath->startsWith(QLatin1String("/System/"));
}

QString parentFolder(const QString &path)
{
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    return slash <= 0 ? QStringLiteral("/") : path.left(slash);
}

qint64 totalSize(const QList<FileItem> &items)
{
    qint64 total = 0;
    for (const FileItem &item : items) {
        if (qAddOverflow(total, item.size, &total))
            return std::numeric_limits<qint64>::max();
    }
    return total;
}

QString summary(qsizetype removed, qsizetype failed, qsizetype skipped)
{
    if (failed > 0)
        return QStringLiteral("⚠ Uninstall completed with errors. %1 succeeded, %2 failed, %3 "
                              "skipped.")
            .arg(removed)
            .arg(failed)
            .arg(skipped);
    if (skipped > 0)
        return QStringLiteral("✓ Uninstall completed. %1 items moved to the Trash, %2 protected "
                              "items skipped.")
            .arg(removed)
            .arg(skipped);
    return QStringLiteral("✓ Uninstall completed successfully. %1 items moved to the Trash.")
        .arg(removed);
}
} // namespace

UninstallRun::UninstallRun(UninstallService::Dependencies dependencies)
    : m_dependencies(std::move(dependencies)),
      m_recorder(m_dependencies.recorder ? m_dependencies.recorder() : nullptr)
{}

void UninstallRun::run(const QList<QSharedPointer<UninstallSession>> &sessions) const
{
    QList<UninstallPlan> plans;
    for (const auto &session : sessions)
        plans.append(prepare(session));
    if (m_recorder)
        m_recorder->planned(plans);
    for (UninstallPlan &plan : plans)
        trashFiles(plan);
    removeAdminFiles(plans);
    for (UninstallPlan &plan : plans)
        finish(plan);
}

UninstallPlan UninstallRun::prepare(const QSharedPointer<UninstallSession> &session) const
{
    AppInfo app;
    QList<FileItem> selected;
    // Copies taken now: a selection changed after the start does not change this run.
    MainThread::call(session.get(), [&] {
        session->setStatus(UninstallStatus::processing());
        session->addLog(QStringLiteral("Starting uninstall process for ") +
                            session->appInfo().displayName(),
                        true);
        app = session->appInfo();
        for (const FileItem &item : session->discoveredFiles()) {
            if (item.isSelected)
                selected.append(item);
        }
    });
    quitApp(session.get(), app);
    unloadLaunchAgents(session.get(), selected);
    UninstallPlan plan;
    plan.session = session;
    sort(plan, selected);
    return plan;
}

void UninstallRun::quitApp(UninstallSession *session, const AppInfo &app) const
{
    const auto error = m_dependencies.process->quitApp(app.bundleIdentifier, app.bundlePath);
    log(session, error ? QStringLiteral("App was not running or already quit")
                       : QStringLiteral("Application quit successfully"));
}

void UninstallRun::unloadLaunchAgents(UninstallSession *session, const QList<FileItem> &items) const
{
    for (const FileItem &item : items) {
        if (item.category != FileCategory::launchAgents)
            continue;
        const auto error = m_dependencies.process->unloadLaunchItem(item.path);
        log(session, (error ? QStringLiteral("Launch agent was not loaded: ")
                            : QStringLiteral("Unloaded: ")) +
                         item.displayPath());
    }
}

void UninstallRun::sort(UninstallPlan &plan, const QList<FileItem> &items) const
{
    for (const FileItem &item : items) {
        if (item.isProtected || isPartOfOperatingSystem(item.path))
            plan.protectedFiles.append(item);
        else if (item.packageID)
            plan.receipts.append(item);
        else if (requiresElevatedPrivileges(item.path))
            plan.adminFiles.append(item);
        else
            plan.trashFiles.append(item);
    }
}

bool UninstallRun::requiresElevatedPrivileges(const QString &path) const
{
    QStringList userRoots{SystemLayout::home(),
                          SystemLayout::path(QStringLiteral("/Applications"))};
    userRoots.append(AdminPathPolicy::userDarwinDirectories());
    const bool isUserPlace =
        std::any_of(userRoots.cbegin(), userRoots.cend(),
                    [&](const auto &root) { return path.startsWith(root + QLatin1Char('/')); });
    return !isUserPlace || !m_dependencies.isWritable(parentFolder(path));
}

void UninstallRun::trashFiles(UninstallPlan &plan) const
{
    for (const FileItem &item : std::as_const(plan.trashFiles)) {
        if (!TrashNaming::itemExists(item.path)) {
            plan.removed.append(item);
            continue;
        }
        bool moved = false;
        QString trashPath;
        MainThread::call(plan.session.get(), [&] {
            QString ignored;
            moved = m_dependencies.trash->moveToTrash(item.path, &ignored, &trashPath);
            if (moved)
                plan.session->addLog(QStringLiteral("Moved to trash: ") + item.displayPath(), true);
        });
        if (moved && m_recorder)
            m_recorder->moved(item.path, trashPath, false);
        // What the user's rights could not move is retried with administrator rights.
        (moved ? plan.removed : plan.adminFiles).append(item);
    }
}

void UninstallRun::removeAdminFiles(QList<UninstallPlan> &plans) const
{
    QSet<QString> reserved;
    QList<AuthorizationService::Move> moves;
    QStringList daemonPlists;
    QStringList packageIDs;
    for (const UninstallPlan &plan : std::as_const(plans)) {
        for (const FileItem &item : plan.adminFiles) {
            moves.append({item.path, trashDestination(item.path, reserved)});
            if (item.category == FileCategory::launchDaemons)
                daemonPlists.append(item.path);
        }
        for (const FileItem &item : plan.receipts) {
            if (item.packageID)
                packageIDs.append(*item.packageID);
        }
    }
    if (moves.isEmpty() && packageIDs.isEmpty())
        return;
    // A missing Trash would make every move as root fail, and the user may create their own.
    // Should that fail too, each move fails and its item is logged and counted as failed.
    QString trashError;
    if (!moves.isEmpty())
        (void)TrashMover::ensureTrashFolder(&trashError);
    for (const UninstallPlan &plan : std::as_const(plans)) {
        const qsizetype count = plan.adminFiles.size() + plan.receipts.size();
        if (count > 0)
            log(plan.session.get(),
                QStringLiteral("Asking for administrator permission for %1 items").arg(count));
    }
    const auto error =
        m_dependencies.authorization->removeWithAdminPrivileges(moves, daemonPlists, packageIDs);
    for (const AuthorizationService::Move &move : std::as_const(moves)) {
        if (m_recorder && !TrashNaming::itemExists(move.source) &&
            TrashNaming::itemExists(move.destination))
            m_recorder->moved(move.source, move.destination, true);
    }
    const QString reason = error ? error->message() : kCouldNotMove;
    for (UninstallPlan &plan : plans)
        judge(plan, reason);
}

void UninstallRun::judge(UninstallPlan &plan, const QString &reason) const
{
    // Only absence counts: the script always succeeds, and a refused item simply stays.
    for (const FileItem &item : plan.adminFiles + plan.receipts) {
        if (TrashNaming::itemExists(item.path)) {
            plan.failed.append(item);
            log(plan.session.get(),
                QStringLiteral("Failed to remove: ") + item.displayPath() + QStringLiteral(" - ") +
                    reason,
                false);
        } else {
            plan.removed.append(item);
            log(plan.session.get(),
                item.packageID ? QStringLiteral("Forgot installer receipt: ") + *item.packageID
                               : QStringLiteral("Moved to trash (admin): ") + item.displayPath());
        }
    }
}

void UninstallRun::finish(UninstallPlan &plan) const
{
    flushPreferencesAndRegistrations(plan);
    const qsizetype removed = plan.removed.size();
    const qsizetype failed = plan.failed.size();
    const qsizetype skipped = plan.protectedFiles.size();
    const qint64 bytes = totalSize(plan.removed);
    UninstallSession *session = plan.session.get();
    MainThread::call(session, [&] {
        if (skipped > 0)
            session->addLog(
                QStringLiteral("⚠️ Skipped %1 files that are part of macOS (cannot be "
                               "deleted)")
                    .arg(skipped),
                true);
        session->setRemovedCount(int(removed));
        session->setFailedCount(int(failed));
        session->setRemovedBytes(bytes);
        session->setStatus(UninstallStatus::completed());
        session->addLog(summary(removed, failed, skipped), failed == 0);
    });
}

void UninstallRun::flushPreferencesAndRegistrations(const UninstallPlan &plan) const
{
    const ProcessService &process = *m_dependencies.process;
    const QString defaults = SystemLayout::path(QStringLiteral("/usr/bin/defaults"));
    for (const PreferenceDomain &entry : PreferenceDomains::in(plan.removed)) {
        QStringList arguments{QStringLiteral("delete"), entry.domain};
        if (entry.byHost)
            arguments.prepend(QStringLiteral("-currentHost"));
        (void)process.run(defaults, arguments);
    }
    const QString lsregister = SystemLayout::path(UninstallService::lsregisterMacPath());
    for (const FileItem &item : plan.removed) {
        if (item.category == FileCategory::application)
            (void)process.run(lsregister, {QStringLiteral("-u"), item.path});
    }
}

QString UninstallRun::trashDestination(const QString &path, QSet<QString> &reserved)
{
    return TrashNaming::freeDestination(AdminPathPolicy::trashDirectory(), path, reserved);
}

void UninstallRun::log(UninstallSession *session, const QString &message, bool isSuccess)
{
    MainThread::call(session, [&] { session->addLog(message, isSuccess); });
}
