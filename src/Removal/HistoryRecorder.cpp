// SPDX-License-Identifier: MIT
#include "HistoryRecorder.h"

#include "Core/MainThread.h"

#include <QFile>

void HistoryRecorder::planned(const QList<UninstallPlan> &plans)
{
    QList<UninstallRecord::Item> items;
    for (const UninstallPlan &plan : plans) {
        QString app;
        MainThread::call(plan.session.get(), [&] { app = plan.session->appInfo().displayName(); });
        for (const FileItem &file : plan.trashFiles + plan.adminFiles + plan.receipts) {
            UninstallRecord::Item item;
            item.path = QFile::encodeName(file.path);
            item.shownPath = m_layout.displayPath(file.path);
            item.app = app;
            item.category = file.category;
            item.size = file.size;
            item.packageID = file.packageID;
            m_indexes.insert(file.path, items.size());
            items.append(item);
        }
    }
    if (items.isEmpty())
        return;
    const QDateTime now = QDateTime::currentDateTimeUtc();
    m_journal = HistoryStore(m_layout).createJournal(now);
    if (m_journal && !m_journal->append(UninstallRecord::headerLine(now, items)))
        m_journal.reset();
}

void HistoryRecorder::moved(const QString &originalPath, const QString &trashPath,
                            bool withAdminRights)
{
    const auto index = m_indexes.constFind(originalPath);
    if (m_journal && index != m_indexes.cend())
        (void)m_journal->append(UninstallRecord::movedLine(*index, QFile::encodeName(trashPath),
                                                           withAdminRights,
                                                           m_layout.displayPath(trashPath)));
}
