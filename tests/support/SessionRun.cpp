// SPDX-License-Identifier: MIT
#include "SessionRun.h"

#include "Removal/UninstallService.h"

#include <QFutureWatcher>
#include <QSignalSpy>
#include <QTest>

namespace SessionRun {

FileItem item(const QString &path, FileCategory category, qint64 size)
{
    FileItem file;
    file.path = path;
    file.category = category;
    file.size = size;
    return file;
}

QSharedPointer<UninstallSession> readySession(const AppInfo &app, const QList<FileItem> &items)
{
    auto session = QSharedPointer<UninstallSession>::create(app);
    session->setDiscoveredFiles(items);
    session->setStatus(UninstallStatus::ready());
    return session;
}

bool toCompletion(UninstallService &service,
                  const QList<QSharedPointer<UninstallSession>> &sessions)
{
    QFutureWatcher<void> watcher;
    QSignalSpy finished(&watcher, &QFutureWatcher<void>::finished);
    watcher.setFuture(service.uninstall(sessions));
    bool ok = false;
    [&] {
        QVERIFY(finished.wait(60'000));
        for (const auto &session : sessions)
            QCOMPARE(session->status(), UninstallStatus::completed());
        ok = true;
    }();
    return ok;
}

QStringList messages(const UninstallSession &session)
{
    QStringList result;
    for (const LogEntry &entry : session.logs())
        result.append(entry.message);
    return result;
}

} // namespace SessionRun
