// SPDX-License-Identifier: MIT
#include "UninstallService.h"

#include <QPromise>

UninstallService::UninstallService() = default;

QFuture<void> UninstallService::uninstall(const QList<QSharedPointer<UninstallSession>> &sessions)
{
    for (const auto &session : sessions)
        session->setStatus(UninstallStatus::processing());
    for (const auto &session : sessions)
        session->setStatus(UninstallStatus::completed());
    QPromise<void> promise;
    promise.start();
    promise.finish();
    return promise.future();
}
