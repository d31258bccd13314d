// SPDX-License-Identifier: MIT
#include "UninstallRun.h"

#include "Core/MainThread.h"
#include "Platform/LogCategories.h"
#include "Platform/MacTools.h"
#include "Platform/SystemLayout.h"
#include "Platform/TrashMover.h"
#include "Platform/TrashNaming.h"
#include "Removal/AuthorizationService.h"
#include "Removal/PreferenceDomains.h"
#include "Removal/ProcessService.h"
#include "Removal/UninstallRecorder.h"

#include <QFile>
#include <QFileInfo>

#include <limits>

namespace {
const QString kCouldNotMove = QStringLiteral("Couldn't be moved to the Trash");

QString parentFolder(const QString &path)
{
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    return slash <= 0 ? QStringLiteral("/") : path.left(slash);
}

// A name that was not valid UTF-8 on disk reached us with replacement characters: moving or
// looking up the re-encoded name would touch another file or none at all.
bool isFaithfulName(const QString &path)
{
    return !path.contains(QChar::ReplacementCharacter) && path.isValidUtf16() &&
           QFile::decodeName(QFile::encodeName(path)) == path;
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

UninstallRun::UninstallRun(SystemLayout layout, UninstallDependencies dependencies)
    : m_layout(std::move(layout)), m_dependencies(std::move(dependencies)),
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
    if (!app.droppedLink.isEmpty() && QFileInfo(app.droppedLink).isSymLink()) {
        FileItem link;
        link.path = app.droppedLink;
        selected.append(link);
    }
    // Leftovers of a deleted app have no bundle: there is nothing of theirs to quit, and a
    // process that merely shares the identifier is not theirs to stop.
    if (!app.bundlePath.isEmpty())
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
    if (error)
        qCDebug(lcRemoval) << app.bundleIdentifier << error->message();
    log(session, error ? QStringLiteral("App was not running or already quit")
                       : QStringLiteral("Application quit successfully"));
}

void UninstallRun::unloadLaunchAgents(UninstallSession *session, const QList<FileItem> &items) const
{
    for (const FileItem &item : items) {
        if (item.category != FileCategory::launchAgents)
            continue;
        const auto error = m_dependencies.process->unloadLaunchItem(item.path);
        if (error)
            qCDebug(lcRemoval) << item.path << error->message();
        log(session, (error ? QStringLiteral("Launch agent was not loaded: ")
                            : QStringLiteral("Unloaded: ")) +
                         m_layout.displayPath(item.path));
    }
}

void UninstallRun::sort(UninstallPlan &plan, const QList<FileItem> &items) const
{
    for (const FileItem &item : items) {
        if (item.isProtected || m_layout.isInSystemFolder(item.path))
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
    QStringList userRoots{m_layout.home(), m_layout.path(QStringLiteral("/Applications"))};
    userRoots.append(m_layout.darwinUserDirectories());
    const bool isUserPlace =
        std::any_of(userRoots.cbegin(), userRoots.cend(),
                    [&](const auto &root) { return path.startsWith(root + QLatin1Char('/')); });
    return !isUserPlace || !m_dependencies.isWritable(parentFolder(path));
}

void UninstallRun::trashFiles(UninstallPlan &plan) const
{
    for (const FileItem &item : std::as_const(plan.trashFiles)) {
        if (!isFaithfulName(item.path)) {
            fail(plan, item, kCouldNotMove);
            continue;
        }
        if (!TrashNaming::itemExists(item.path)) {
            plan.removed.append(item);
            continue;
        }
        bool moved = false;
        QString trashPath;
        MainThread::call(plan.session.get(), [&] {
            const Result<QString> result = m_dependencies.trash->moveToTrash(item.path);
            moved = result.hasValue();
            if (!moved) {
                qCDebug(lcRemoval) << "moving" << item.path << "failed:" << result.error();
                return;
            }
            trashPath = *result;
            plan.session->addLog(
                QStringLiteral("Moved to trash: ") + m_layout.displayPath(item.path), true);
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
            if (!isFaithfulName(item.path))
                continue;
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
    if (!moves.isEmpty())
        if (const auto refused = ensureTrashFolder(m_layout))
            qCDebug(lcRemoval) << "no Trash folder:" << *refused;
    for (const UninstallPlan &plan : std::as_const(plans)) {
        const qsizetype count = plan.adminFiles.size() + plan.receipts.size();
        if (count > 0)
            log(plan.session.get(),
                QStringLiteral("Asking for administrator permission for %1 items").arg(count));
    }
    const AuthorizationService::Report report =
        m_dependencies.authorization->removeWithAdminPrivileges(moves, daemonPlists, packageIDs);
    if (report.error)
        qCDebug(lcRemoval) << "administrator step:" << report.error->message();
    for (UninstallPlan &plan : plans)
        judge(plan, report);
}

void UninstallRun::judge(UninstallPlan &plan, const AuthorizationService::Report &report) const
{
    // A move counts only on the helper's word that the very item left its place for the Trash
    // (or was already gone); a receipt only when it is gone.
    QStringList reasons;
    for (const FileItem &item : std::as_const(plan.adminFiles)) {
        const HelperRecord result = report.moves.value(QFile::encodeName(item.path));
        if (!report.error && isFaithfulName(item.path) &&
            (result.word == "moved" || result.word == "done")) {
            plan.removed.append(item);
            if (m_recorder && result.word == "moved" && result.fields.size() > 1)
                m_recorder->moved(item.path, QFile::decodeName(result.fields.at(1)), true);
            log(plan.session.get(),
                QStringLiteral("Moved to trash (admin): ") + m_layout.displayPath(item.path));
            continue;
        }
        fail(plan, item, report.error ? report.error->message() : kCouldNotMove);
        noteReason(reasons, result);
    }
    for (const FileItem &item : std::as_const(plan.receipts)) {
        if (TrashNaming::itemExists(item.path)) {
            fail(plan, item, report.error ? report.error->message() : kCouldNotMove);
        } else {
            plan.removed.append(item);
            log(plan.session.get(),
                QStringLiteral("Forgot installer receipt: ") + item.packageID.value_or(QString()));
        }
    }
    // A refused boot-out or forget (say, a tool others could change) is told too.
    for (const FileItem &item : plan.adminFiles + plan.receipts)
        noteReason(reasons, report.others.value(item.packageID ? item.packageID->toUtf8()
                                                               : QFile::encodeName(item.path)));
    // Why, once per reason: a refused Trash or a linked folder explains a whole run of failures.
    for (const QString &reason : std::as_const(reasons))
        log(plan.session.get(), QStringLiteral("Not done as administrator: ") + reason, false);
}

void UninstallRun::noteReason(QStringList &reasons, const HelperRecord &result)
{
    if (result.word != "failed")
        return;
    const QString reason = QString::fromUtf8(result.fields.at(1));
    if (!reasons.contains(reason))
        reasons.append(reason);
}

void UninstallRun::fail(UninstallPlan &plan, const FileItem &item, const QString &reason) const
{
    plan.failed.append(item);
    log(plan.session.get(),
        QStringLiteral("Failed to remove: ") + m_layout.displayPath(item.path) +
            QStringLiteral(" - ") + reason,
        false);
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
    const QString defaults = m_layout.path(QStringLiteral("/usr/bin/defaults"));
    for (const PreferenceDomain &entry : PreferenceDomains::in(m_layout, plan.removed)) {
        QStringList arguments{QStringLiteral("delete"), entry.domain};
        if (entry.byHost)
            arguments.prepend(QStringLiteral("-currentHost"));
        (void)process.run(defaults, arguments);
    }
    const QString lsregister = m_layout.path(MacTools::lsregister());
    for (const FileItem &item : plan.removed) {
        if (item.category == FileCategory::application)
            (void)process.run(lsregister, {QStringLiteral("-u"), item.path});
    }
}

QString UninstallRun::trashDestination(const QString &path, QSet<QString> &reserved) const
{
    return TrashNaming::freeDestination(m_layout.trashDirectory(), path, reserved);
}

void UninstallRun::log(UninstallSession *session, const QString &message, bool isSuccess)
{
    MainThread::call(session, [&] { session->addLog(message, isSuccess); });
}
