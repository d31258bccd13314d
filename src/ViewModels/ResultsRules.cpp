// SPDX-License-Identifier: MIT
#include "ResultsRules.h"

#include "ItemBadge.h"
#include "Models/ByteCountFormatter.h"

namespace ResultsRules {

bool hasProtectedFiles(const QList<const UninstallSession *> &sessions)
{
    for (const UninstallSession *session : sessions) {
        for (const FileItem &item : session->discoveredFiles()) {
            if (item.isSelected && (item.requiresAdmin || !item.isWritable))
                return true;
        }
    }
    return false;
}

QString batchName(const QList<const UninstallSession *> &sessions)
{
    if (sessions.size() == 1)
        return sessions.constFirst()->appInfo().displayName();
    return QString::number(sessions.size()) + QStringLiteral(" apps");
}

bool hasFailures(const QList<const UninstallSession *> &sessions)
{
    return std::any_of(sessions.cbegin(), sessions.cend(),
                       [](const UninstallSession *session) { return session->failedCount() > 0; });
}

QString confirmationMessage(const QString &batchName, int fileCount, qint64 totalSize,
                            bool hasProtectedFiles)
{
    QString message = QStringLiteral("Are you sure you want to remove ") + batchName +
                      QStringLiteral("?\n\nThis will move ") + QString::number(fileCount) +
                      QStringLiteral(" files (") + formattedByteCount(totalSize);
    if (hasProtectedFiles)
        return message +
               QStringLiteral(
                   ") to the Trash.\n\n⚠️ Some files require administrator privileges. "
                   "You may be prompted to authenticate with Touch ID or your "
                   "password.");
    return message + QStringLiteral(") to the Trash.");
}

QString selectionSummary(const UninstallSession &session)
{
    return QString::number(session.selectedFilesCount()) + QStringLiteral(" of ") +
           QString::number(session.fileCount()) + QStringLiteral(" · ") +
           formattedByteCount(session.totalSize());
}

QString iconSource(const AppInfo &app)
{
    if (!app.icon || app.icon->isEmpty())
        return {};
    return QStringLiteral("data:image/png;base64,") + QString::fromLatin1(app.icon->toBase64());
}

} // namespace ResultsRules
