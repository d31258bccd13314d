// SPDX-License-Identifier: MIT
#include "UninstallService.h"

#include "Platform/SystemServices.h"
#include "Platform/TrashMover.h"
#include "Removal/AuthorizationService.h"
#include "Removal/HistoryRecorder.h"
#include "Removal/ProcessService.h"
#include "Removal/UninstallRun.h"

#include <QFile>
#include <QtConcurrent>

#include <unistd.h>

UninstallService::UninstallService(SystemLayout layout, Dependencies dependencies)
    : m_layout(std::move(layout)), m_dependencies(std::move(dependencies))
{
    if (!m_dependencies.process)
        m_dependencies.process = std::make_shared<const ProcessService>(m_layout);
    if (!m_dependencies.authorization)
        m_dependencies.authorization = std::make_shared<const AuthorizationService>(m_layout);
    if (!m_dependencies.trash)
        m_dependencies.trash = SystemServices::trashMover(m_layout);
    if (!m_dependencies.recorder)
        m_dependencies.recorder = [layout = m_layout] {
            return std::make_shared<HistoryRecorder>(layout);
        };
    if (!m_dependencies.isWritable)
        m_dependencies.isWritable = [](const QString &folder) {
            return ::access(QFile::encodeName(folder).constData(), W_OK) == 0;
        };
}

QFuture<void> UninstallService::uninstall(const QList<QSharedPointer<UninstallSession>> &sessions)
{
    // The task holds its own copies, so it may outlive this service.
    return QtConcurrent::run([layout = m_layout, dependencies = m_dependencies, sessions] {
        UninstallRun(layout, dependencies).run(sessions);
    });
}
