// SPDX-License-Identifier: MIT
#pragma once

#include "Models/UninstallSession.h"
#include "Platform/SystemLayout.h"
#include "Removal/AuthorizationService.h"
#include "Removal/UninstallDependencies.h"
#include "Removal/UninstallPlan.h"

#include <QSet>

// One uninstall of a batch, on the background task: prepare every session (quit, unload,
// sort into a plan), move the user-level items, one privileged request for the rest of all
// plans, then each session's clean-up, counters and summary.
class UninstallRun
{
public:
    UninstallRun(SystemLayout layout, UninstallDependencies dependencies);

    // Blocks until every session is completed. Never on the GUI thread.
    void run(const QList<QSharedPointer<UninstallSession>> &sessions) const;

private:
    [[nodiscard]] UninstallPlan prepare(const QSharedPointer<UninstallSession> &session) const;
    void quitApp(UninstallSession *session, const AppInfo &app) const;
    void unloadLaunchAgents(UninstallSession *session, const QList<FileItem> &items) const;
    void sort(UninstallPlan &plan, const QList<FileItem> &items) const;
    [[nodiscard]] bool requiresElevatedPrivileges(const QString &path) const;

    void trashFiles(UninstallPlan &plan) const;
    void removeAdminFiles(QList<UninstallPlan> &plans) const;
    void judge(UninstallPlan &plan, const AuthorizationService::Report &report) const;
    static void noteReason(QStringList &reasons, const HelperRecord &result);
    void fail(UninstallPlan &plan, const FileItem &item, const QString &reason) const;
    void finish(UninstallPlan &plan) const;
    void flushPreferencesAndRegistrations(const UninstallPlan &plan) const;

    // A fresh free name in the Trash for the item, promised to it within `reserved`.
    [[nodiscard]] QString trashDestination(const QString &path, QSet<QString> &reserved) const;
    static void log(UninstallSession *session, const QString &message, bool isSuccess = true);

    SystemLayout m_layout;
    UninstallDependencies m_dependencies;
    std::shared_ptr<UninstallRecorder> m_recorder; // this run's record; may be none
};
